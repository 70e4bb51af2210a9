/// \file
/// Bytes of documents and their text.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace phone::xml {

/// The XML declaration at the start of a text: what stands between "<?xml" and "?>", trimmed. Nothing without one.
std::optional<std::string_view> FindDeclaration(std::string_view text) noexcept;
/// The encoding that a declaration names; empty when it names none.
std::string_view DeclaredEncoding(std::string_view declaration) noexcept;

/// True for the name of UTF-8, and for no name.
bool IsUtf8(std::string_view encoding);

/// Text as UTF-8: the bytes themselves where they are UTF-8 already, else `storage`.
struct DecodedText {
  std::string_view text;
  std::string storage;
};

/// Decodes a document by its byte order mark, else by the encoding it declares, else as UTF-8 (which is not checked
/// here). False when the encoding is unknown or the bytes are not in it. Throws std::bad_alloc.
bool Decode(std::span<const std::byte> bytes, DecodedText& decoded);

/// One part of a document's text, as it is to be written.
struct Piece {
  std::string text;
  bool verbatim;  ///< a character reference would not be read as one in it
};

/// Encodes a document in the encoding of this name (empty: UTF-8). What the encoding cannot hold becomes a character
/// reference; nothing when the encoding is unknown, or where no reference can stand. Throws std::bad_alloc.
std::optional<std::vector<std::byte>> Encode(std::span<const Piece> pieces, std::string_view encoding);

}  // namespace phone::xml
