#include "graphics/trace.h"

#include <charconv>
#include <utility>

#include "graphics/trace_recorder.h"

namespace phone {

constinit bool trace_enabled = true;

namespace {

struct Trace {
  std::vector<DrawRecord> records;
  std::vector<DrawRecord> spare;  // of earlier frames, for the memory of their texts
};

Trace& TheTrace() {
  static Trace* const trace = new Trace;
  return *trace;
}

DrawRecord& AddRecord(DrawKind kind) {
  Trace& trace = TheTrace();
  if (trace.spare.empty()) trace.spare.emplace_back();
  DrawRecord& record = trace.records.emplace_back(std::move(trace.spare.back()));
  trace.spare.pop_back();
  record.kind = kind;
  record.from.clear();
  record.picture.reset();
  record.text.clear();
  record.face.clear();
  record.source_width = record.source_height = record.alpha = record.alpha_format = record.size = record.weight = 0;
  record.color = 0;
  record.transparent = false;
  record.format = 0;
  return record;
}

void AssignName(std::string& name, const DeviceContext& context) {
  if (!context.memory) {
    name = context.name;
    return;
  }
  char digits[16];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, context.memory_number);
  name.assign("memory");
  name.append(digits, end);
}

/// Whether the pixels are a picture that stays as it is: one that the program has filled itself.
bool IsPicture(const Bitmap& bitmap) noexcept {
  return bitmap.shared_with_program && !bitmap.drawn_into;
}

}  // namespace

void EnableTrace(bool on) {
  trace_enabled = on;
  if (!on) TheTrace().records.clear();
}

void BeginTrace() {
  Trace& trace = TheTrace();
  while (!trace.records.empty()) {
    trace.spare.push_back(std::move(trace.records.back()));
    trace.records.pop_back();
  }
}

const std::vector<DrawRecord>& TraceRecords() {
  return TheTrace().records;
}

void ResetTrace() {
  BeginTrace();
  RestartContextNumbers();
}

void TraceBlit(DrawKind kind, const DeviceContext& target, const RECT& rect, const DeviceContext& source, int width,
               int height, const BLENDFUNCTION* blend) {
  DrawRecord& record = AddRecord(kind);
  AssignName(record.target, target);
  AssignName(record.from, source);
  record.rect = rect;
  record.source_width = width;
  record.source_height = height;
  if (IsPicture(*source.bitmap)) record.picture = source.bitmap->Checksum();
  if (blend != nullptr) {
    record.alpha = blend->SourceConstantAlpha;
    record.alpha_format = blend->AlphaFormat;
  }
}

void TraceText(const DeviceContext& target, const RECT& rect, std::u16string_view text, UINT format) {
  DrawRecord& record = AddRecord(DrawKind::DrawText);
  AssignName(record.target, target);
  record.rect = rect;
  record.text = text;
  record.face = target.font->request().Name();
  record.size = target.font->CharacterHeight();
  record.weight = target.font->request().weight;
  record.color = target.text_color;
  record.transparent = target.transparent;
  record.format = format;
}

}  // namespace phone
