/// \file
/// What the tests of the themes room share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/file_content.h"
#include "support/on_phone.h"
#include "system/faults.h"
#include "system/text.h"
#include "themes/xml_reading.h"

using Texts = std::vector<std::string>;
using phone::Operation;

inline std::string Utf8(std::u16string_view text) {
  return phone::ToUtf8Lossy(text);
}

inline std::filesystem::path HomeFolder(const std::filesystem::path& folder) {
  return folder / "Application Data" / "Home";
}

inline ComPtr<IXMLDOMDocument> Parse(std::u16string_view xml) {
  ComPtr<IXMLDOMDocument> document;
  EXPECT_EQ(LoadXmlText(std::u16string(xml).c_str(), document), S_OK) << Utf8(xml);
  return document;
}

/// The root element of a document without anything before it.
inline ComPtr<IXMLDOMNode> Root(const ComPtr<IXMLDOMDocument>& document) {
  ComPtr<IXMLDOMNode> root;
  EXPECT_EQ(document->get_firstChild(root.Receive()), S_OK);
  return root;
}

inline std::string XmlOf(IXMLDOMNode* node) {
  Bstr xml;
  EXPECT_EQ(node->get_xml(xml.Receive()), S_OK);
  return Utf8(xml.text());
}

/// A ring that is emptied when the test ends.
template <typename Record>
struct Ring {
  ~Ring() { ClearRing(head); }
  Record* head = nullptr;
};

/// One text field of each record.
template <typename Record>
Texts Fields(const Ring<Record>& ring, TextField Record::*field) {
  Texts texts;
  for (const Record& record : RingRange(ring.head)) texts.push_back(Utf8((record.*field).units));
  return texts;
}
