#include "visuals/visual_group.h"

#include <new>

#include "base/ring.h"
#include "base/status.h"

namespace {

/// Deletes the children of a ring and their places; the head becomes null. A child that was added twice goes once.
template <typename Visual>
void DestroyRing(ChildNode<Visual>*& head) noexcept {
  while (head) {
    const std::unique_ptr<ChildNode<Visual>> node = TakeFromRing(head, head);
    for (ChildNode<Visual>& other : RingRange(head))
      if (other.member == node->member) other.member = nullptr;
    delete node->member;
  }
}

/// A new place for a child at the end of its ring, or null.
template <typename Visual>
ChildNode<Visual>* AppendChild(ChildNode<Visual>*& head, Visual* member) noexcept {
  std::unique_ptr<ChildNode<Visual>> node(new (std::nothrow) ChildNode<Visual>);
  if (!node) return nullptr;
  node->member = member;
  AppendToRing(head, std::move(node));
  return head->prev;
}

template <typename Visual>
bool IsMember(ChildNode<Visual>* head, const Visual* member) noexcept {
  for (const ChildNode<Visual>& child : RingRange(head))
    if (child.member == member) return true;
  return false;
}

}  // namespace

CVisualGroup::CVisualGroup(DWORD newTag, INT left, INT top, INT newHeight, INT newWidth) noexcept {
  tag = newTag;
  height.base = newHeight;
  width.base = newWidth;
  MoveTo(left, top);
  Resize(newHeight, newWidth);
}

CVisualGroup::~CVisualGroup() {
  DestroyChildren();
  ClearScript(firstStep, lastStep);
}

void CVisualGroup::MoveTo(INT newX, INT newY) noexcept {
  x.base = newX;
  y.base = newY;
  SetPosition(newX, newY);
  PropagateOrigin(newX, newY);
  SetSize(height.base, width.base);
  PropagateExtent(height.base, width.base);
}

void CVisualGroup::Resize(INT newHeight, INT newWidth) noexcept {
  height.base = newHeight;
  width.base = newWidth;
  SetSize(newHeight, newWidth);
  PropagateExtent(newHeight, newWidth);
}

void CVisualGroup::SetGroupAlpha(INT value) noexcept {
  PropagateAlpha(value);
  alpha.current = alpha.base = value;
}

HRESULT CVisualGroup::AddImage(CImageVisual* image, DWORD childAnchors) noexcept {
  if (!image) return E_OUTOFMEMORY;
  if (!IsMember(images, image) && !AppendChild(images, image)) return E_OUTOFMEMORY;
  LayOutNewChild(*image, childAnchors);
  return S_OK;
}

HRESULT CVisualGroup::AddText(CTextVisual* text, DWORD childAnchors) noexcept {
  if (!AppendChild(texts, text)) return E_OUTOFMEMORY;
  LayOutNewChild(*text, childAnchors);
  return S_OK;
}

/// The anchors come last, so that the first layout takes the child as it stands: its place in percent, its own size.
void CVisualGroup::LayOutNewChild(CVisual& child, DWORD childAnchors) noexcept {
  child.SetParentOrigin(x.current, y.current);
  child.SetParentExtent(height.current, width.current);
  child.SetAnchors(childAnchors);
}

void CVisualGroup::PropagateOrigin(INT originX, INT originY) noexcept {
  for (const auto& child : RingRange(images)) child.member->SetParentOrigin(originX, originY);
  for (const auto& child : RingRange(texts)) child.member->SetParentOrigin(originX, originY);
}

void CVisualGroup::PropagateExtent(INT extentHeight, INT extentWidth) noexcept {
  for (const auto& child : RingRange(images)) child.member->SetParentExtent(extentHeight, extentWidth);
  for (const auto& child : RingRange(texts)) child.member->SetParentExtent(extentHeight, extentWidth);
}

void CVisualGroup::PropagateAlpha(INT value) noexcept {
  for (const auto& child : RingRange(images)) child.member->SetAlpha(value);
}

void CVisualGroup::PropagateCurrent() noexcept {
  PropagateOrigin(x.current, y.current);
  PropagateExtent(height.current, width.current);
  PropagateAlpha(alpha.current & 0xFF);
}

void CVisualGroup::Draw(HDC dc, DWORD selector) noexcept {
  if (animating) Unexamined(TickAnimation());
  if (visible.current == 1 && alpha.current > ALPHA_TRANSPARENT) {
    for (const auto& child : RingRange(images)) Unexamined(child.member->Draw(dc, selector));
    for (const auto& child : RingRange(texts)) child.member->Draw(dc);
  }
  if (animating) RequestFrame();
}

void CVisualGroup::DestroyChildren() noexcept {
  DestroyRing(images);
  DestroyRing(texts);
}
