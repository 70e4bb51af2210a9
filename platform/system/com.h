/// \file
/// The components that CoCreateInstance can make.
#pragma once

#include "objbase.h"

namespace phone {

/// Makes an object of a class with the wanted interface.
using ComponentMaker = HRESULT (*)(REFIID iid, void** object) noexcept;

/// Makes a class known to CoCreateInstance, for this run of the phone. Again for the same class: replaces.
void RegisterComponent(const CLSID& class_id, ComponentMaker maker);

}  // namespace phone
