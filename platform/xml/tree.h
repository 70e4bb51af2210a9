/// \file
/// Who owns nodes.
///
/// libxml2 frees a tree as a whole; objects of the program are counted one by one. A Tree stands between them: it owns
/// a document, or a subtree without parent that was made in a document's context, and every node object holds the Tree
/// its node lies in. A node knows its object (_private), so that the objects of a subtree can follow when it moves.
#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <memory>
#include <string>

namespace phone::xml {

class NodeCore;
class Tree;
using TreeRef = std::shared_ptr<Tree>;

class Tree {
 public:
  /// Takes over the document.
  explicit Tree(xmlDoc* document) noexcept : document_(document) {}
  /// Takes over a node without parent that belongs to the document of `context`.
  Tree(TreeRef context, xmlNode* root) noexcept
      : context_(std::move(context)), document_(context_->document_), root_(root) {}
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;
  ~Tree();

  xmlDoc* document() const noexcept { return document_; }
  /// The node without parent that it owns; null for a document, and after its release.
  xmlNode* root() const noexcept { return root_; }
  /// Lets a node go, which is to belong to another tree.
  void Release(const xmlNode* node) noexcept {
    if (root_ == node) root_ = nullptr;
  }
  /// The tree of the document in whose context this tree's nodes were made.
  static TreeRef Context(const TreeRef& tree) noexcept { return tree->context_ ? tree->context_ : tree; }

  /// Counts changes of structure, for who keeps a place in a list of children.
  std::uint64_t changes = 0;
  /// How much of what its entities stand for a document still gives as texts: beyond it they are cut short.
  std::size_t entity_texts_left = std::size_t{1} << 24;
  /// The internal subset as it was written, from its opening bracket to its closing one; empty without one.
  std::string internal_subset;

 private:
  TreeRef context_;
  xmlDoc* document_;
  xmlNode* root_ = nullptr;
};

/// The makers of trees take over what they are given, also when they throw std::bad_alloc.
TreeRef NewDocumentTree();
TreeRef OwnDocument(xmlDoc* document);
/// For a node without parent, made in the document of `maker`.
TreeRef OwnSubtree(const TreeRef& maker, xmlNode* root);

/// The object that stands for a node, or null.
NodeCore* CoreOf(xmlNode* node) noexcept;
void SetCore(xmlNode* node, NodeCore* core) noexcept;

/// Makes every string of a subtree that lies in its document's dictionary an own one, unless `target` shares it.
/// Throws std::bad_alloc.
void OwnStrings(xmlNode* root, xmlDoc* target);
/// The nodes of the subtree, its strings owned, belong to `target` now, and so do their objects. Never fails.
void MoveTo(const TreeRef& target, xmlNode* root) noexcept;
/// Unlinks a subtree and frees it, or leaves it to the objects that stand for nodes of it. Throws std::bad_alloc, and
/// has done nothing then.
void Discard(const TreeRef& tree, xmlNode* root);

}  // namespace phone::xml
