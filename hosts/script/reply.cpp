#include "hosts/script/reply.h"

#include "graphics/trace.h"
#include "hosts/script/picture.h"
#include "system/faults.h"
#include "system/text.h"

namespace script {
namespace {

using phone::DrawKind;
using phone::DrawRecord;

Reply Text(std::u16string_view text) {
  return phone::ToUtf8Lossy(text);
}

template <typename Records, typename Describe>
Reply List(const Records& records, Describe describe) {
  Reply list = Reply::array();
  for (const auto& record : records) list.push_back(describe(record));
  return list;
}

// --- The state ---

Reply DescribeFocus(const phone::State& state) {
  if (state.focused_edit) return *state.focused_edit;
  return state.main_focused ? Reply("main") : Reply(nullptr);
}

Reply DescribeEdit(const phone::EditState& edit) {
  const RECT& rect = edit.rect;
  return {{"text", Text(edit.text)},
          {"rect", Reply::array({rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top})},
          {"focus", edit.focus},
          {"caret", edit.caret},
          {"selection", Reply::array({edit.selection_start, edit.selection_end})}};
}

Reply DescribeBox(const phone::BoxState& box) {
  return {{"text", Text(box.text)},
          {"caption", Text(box.caption)},
          {"style", box.style},
          {"buttons", List(box.buttons, Text)}};
}

Reply DescribeBroadcast(const phone::Broadcast& broadcast) {
  return {{"tick", broadcast.tick},
          {"message", broadcast.message},
          {"wparam", broadcast.wparam},
          {"lparam", broadcast.lparam}};
}

Reply DescribeLaunch(const phone::Launch& launch) {
  return {{"file", Text(launch.file)}, {"parameters", Text(launch.parameters)}};
}

Reply DescribeWrite(const phone::RegistryWrite& write) {
  return {{"tick", write.tick}, {"key", Text(write.key)}, {"value", Text(write.value)}, {"text", Text(write.text)}};
}

Reply DescribeCalls() {
  Reply calls = Reply::object();
  for (std::size_t index = 0; index < phone::kOperationCount; ++index) {
    const auto operation = static_cast<phone::Operation>(index);
    calls[std::string(phone::OperationName(operation))] = phone::CallCount(operation);
  }
  return calls;
}

// --- The drawing ---

const char* NameOf(DrawKind kind) {
  switch (kind) {
    case DrawKind::BitBlt: return "BitBlt";
    case DrawKind::StretchBlt: return "StretchBlt";
    case DrawKind::AlphaBlend: return "AlphaBlend";
    case DrawKind::DrawText: return "DrawText";
  }
  return "";
}

void DescribeText(const DrawRecord& record, Reply& reply) {
  const RECT& rect = record.rect;
  reply["rect"] = Reply::array({rect.left, rect.top, rect.right, rect.bottom});
  reply["text"] = Text(record.text);
  reply["face"] = Text(record.face);
  reply["size"] = record.size;
  reply["weight"] = record.weight;
  reply["color"] = record.color;
  reply["background"] = record.transparent ? "transparent" : "opaque";
  reply["format"] = record.format;
}

void DescribeBlit(const DrawRecord& record, Reply& reply) {
  const RECT& rect = record.rect;
  reply["from"] = record.from;
  reply["x"] = rect.left;
  reply["y"] = rect.top;
  reply["w"] = rect.right - rect.left;
  reply["h"] = rect.bottom - rect.top;
  reply["source"] = Reply::array({record.source_width, record.source_height});
  if (record.picture) reply["picture"] = Hexadecimal(*record.picture);
  if (record.kind != DrawKind::AlphaBlend) return;
  reply["alpha"] = record.alpha;
  reply["format"] = record.alpha_format;
}

Reply DescribeRecord(const DrawRecord& record) {
  Reply reply = {{"op", NameOf(record.kind)}, {"target", record.target}};
  if (record.kind == DrawKind::DrawText) {
    DescribeText(record, reply);
  } else {
    DescribeBlit(record, reply);
  }
  return reply;
}

}  // namespace

void DescribeState(Execution& execution, Reply& reply) {
  const phone::State state = execution.ending ? execution.ending->state : phone::Look();
  reply["tick"] = execution.clock.Now();
  reply["exit"] = execution.ending ? Reply(execution.ending->exit_code) : Reply(nullptr);
  reply["foreground"] = state.foreground;
  reply["raised"] = state.raised;
  reply["title"] = Text(state.title);
  reply["client"] = Reply::array({state.client_width, state.client_height});
  reply["bar"] = {{"left", Text(state.bar_left)}, {"right", Text(state.bar_right)}};
  reply["bars_visible"] = state.bars_visible;
  reply["windows"] = state.windows;
  reply["focus"] = DescribeFocus(state);
  reply["menu"] = state.menu ? List(*state.menu, Text) : Reply(nullptr);
  reply["edits"] = List(state.edits, DescribeEdit);
  reply["box"] = state.box ? DescribeBox(*state.box) : Reply(nullptr);
  reply["cursor"] = state.cursor == phone::Cursor::wait ? "wait" : "none";
  reply["invalid"] = state.invalid;
  reply["broadcasts"] = List(state.broadcasts, DescribeBroadcast);
  reply["launched"] = List(state.launched, DescribeLaunch);
  reply["registry_writes"] = List(state.registry_writes, DescribeWrite);
  reply["back_navigations"] = state.back_navigations;
  reply["back_forwarded"] = state.back_forwarded;
  reply["worker"] = state.worker;
  reply["calls"] = DescribeCalls();
}

Reply DescribeDrawing() {
  return List(phone::TraceRecords(), DescribeRecord);
}

}  // namespace script
