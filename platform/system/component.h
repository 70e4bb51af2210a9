/// \file
/// What every component is made of: finding its interface, and counting its references.
#pragma once

#include "objbase.h"
#include "winerror.h"

namespace phone {

/// A component of one interface besides IUnknown, made with one reference. It is held by one thread at a time.
template <typename Interface, const IID& kInterface = IID_IUnknown>
class Component : public Interface {
 public:
  Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == kInterface)) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    ++references_;
    return S_OK;
  }

  ULONG AddRef() override { return ++references_; }

  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Component() = default;

 private:
  ULONG references_ = 1;
};

}  // namespace phone
