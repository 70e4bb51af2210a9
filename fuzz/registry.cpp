// The registry file. The first line of an input is a value's key, name and text, divided by tabs; the rest is the file.

#include "fuzz/fuzzing.h"
#include "phone.h"
#include "system/outside.h"
#include "system/registry_file.h"
#include "system/text.h"

namespace {

using fuzzing::Phone;
using fuzzing::Require;
using phone::RegistryFile;

struct Value {
  std::u16string key;
  std::u16string name;
  std::u16string text;
};

Value ParseValue(std::string_view line) {
  Value value;
  for (std::u16string* const field : {&value.key, &value.name, &value.text}) {
    const std::string_view part = line.substr(0, line.find('\t'));
    *field = phone::ToUtf16(part).value_or(u"Scheme");
    line.remove_prefix(std::min(part.size() + 1, line.size()));
  }
  return value;
}

RegistryFile ReadAgain(const RegistryFile& file) {
  const auto again = RegistryFile::Parse(file.Text());
  Require(again.has_value(), "what is written can be read");
  Require(again->Text() == file.Text(), "reading changes nothing");
  return *again;
}

void CheckText(std::u16string_view text, const Value& value) {
  auto file = RegistryFile::Parse(text);
  if (!file) return;
  const RegistryFile before = ReadAgain(*file);
  const Value other = {u"Other", u"Kept \"\\\"", u"line\nof C:\\"};
  Require(file->Set(other.key, other.name, other.text), "a plain value can be set");
  if (file->Set(value.key, value.name, value.text)) {
    const RegistryFile again = ReadAgain(*file);
    Require(again.Get(value.key, value.name) == value.text, "a value is as it was set");
    if (phone::CompareFolded(value.key, other.key) != 0)
      Require(again.Get(other.key, other.name) == other.text, "another value stays");
    Require(file->Delete(value.key, value.name), "a value can be deleted");
    Require(!ReadAgain(*file).Get(value.key, value.name), "a deleted value is gone");
  }
}

/// The same through the phone: in the file, as the program would set it.
void CheckFile(std::string_view bytes, const Value& value) {
  const Phone& phone = Phone::On();
  phone.Put("registry.reg", bytes);
  phone::LoadRegistry();
  if (phone::RegistrySet(value.key, value.name, value.text)) {
    phone::LoadRegistry();
    Require(phone::RegistryGet(value.key, value.name) == value.text, "a value is in the file as it was set");
  } else {
    Require(phone.Content("registry.reg") == bytes, "a file that cannot take a value is left as it is");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text = fuzzing::TextOf(data, size);
  const Value value = ParseValue(fuzzing::CutLine(text));
  if (const auto units = phone::ToUtf16(text)) CheckText(*units, value);
  CheckFile(text, value);
  return 0;
}
