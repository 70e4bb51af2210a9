/// \file
/// A circular, doubly linked ring of records with `next` and `prev` links of their own, known by its head: the first
/// record, or null when the ring is empty. The ring owns its records.
#pragma once

#include <iterator>
#include <memory>

/// Links a record in at the end: between the last one and the head.
template <typename Node>
void AppendToRing(Node*& head, std::unique_ptr<Node> owned) noexcept {
  Node* const node = owned.release();
  if (!head) {
    node->next = node->prev = node;
    head = node;
    return;
  }
  node->next = head;
  node->prev = head->prev;
  head->prev->next = node;
  head->prev = node;
}

/// Takes a record out and gives it back to the caller. Taking the head makes the next record the head.
template <typename Node>
[[nodiscard]] std::unique_ptr<Node> TakeFromRing(Node*& head, Node* node) noexcept {
  if (node->next == node) {
    head = nullptr;
  } else {
    node->prev->next = node->next;
    node->next->prev = node->prev;
    if (head == node) head = node->next;
  }
  node->next = node->prev = nullptr;
  return std::unique_ptr<Node>(node);
}

/// Frees every record, from the head on; the head becomes null.
template <typename Node>
void ClearRing(Node*& head) noexcept {
  while (head) {
    [[maybe_unused]] const std::unique_ptr<Node> freed = TakeFromRing(head, head);
  }
}

/// The records of a ring from the head on, each once, for a range-based loop. The ring must not change meanwhile.
template <typename Node>
class RingRange {
 public:
  class Iterator {
   public:
    Iterator(Node* node, Node* head) noexcept : node_(node), head_(head) {}
    Node& operator*() const noexcept { return *node_; }
    Iterator& operator++() noexcept {
      node_ = node_->next == head_ ? nullptr : node_->next;
      return *this;
    }
    bool operator!=(std::default_sentinel_t) const noexcept { return node_ != nullptr; }

   private:
    Node* node_;
    Node* head_;
  };

  explicit RingRange(Node* head) noexcept : head_(head) {}
  Iterator begin() const noexcept { return {head_, head_}; }
  std::default_sentinel_t end() const noexcept { return {}; }

 private:
  Node* head_;
};
