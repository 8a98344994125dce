// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/json_request.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "core/keys.h"
#include "platform/key_chars.h"

namespace corvid {

namespace {

using Json = nlohmann::json;
using Kind = JsonRequest::Kind;

constexpr std::array<std::string_view, 8> Gettable{"entry", "output", "buffer", "title",
                                                   "focus", "dialog", "menu",   "sessions"};

JsonRequest Wrong(const std::string& text) {
  JsonRequest request;
  request.Text = text;
  return request;
}

bool ReadNumber(const Json& object, const char* name, int32& number) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_number_integer()) return false;
  const auto value = found->get<std::int64_t>();
  if (value < 0 || value > 0x7FFFFFFF) return false;
  number = static_cast<int32>(value);
  return true;
}

JsonRequest ReadKey(JsonRequest request) {
  request.KeyCode = LoneKey(request.Text);
  if (request.KeyCode != 0) return request;
  // A name such as "Control-Alt" is a lone key too, pressed with the other held.
  const std::size_t dash = request.Text.rfind('-');
  if (dash != std::string::npos && dash > 0) {
    const int16 lone = LoneKey(std::string_view(request.Text).substr(dash + 1));
    int16 anyKey = 0;
    if (lone != 0) ParseKeystroke(request.Text.substr(0, dash) + "-F1", request.Shift, anyKey);
    if (lone != 0 && anyKey > 0) {
      request.KeyCode = lone;
      return request;
    }
  }
  ParseKeystroke(request.Text, request.Shift, request.KeyCode);
  if (request.KeyCode <= 0) return Wrong("\"" + request.Text + "\" is no key name");
  return request;
}

JsonRequest ReadSelect(const Json& value) {
  JsonRequest request;
  request.What = Kind::Select;
  if (!value.is_object()) return Wrong("\"select\" takes an object with window, start and length");
  const auto window = value.find("window");
  if (window != value.end() && window->is_string()) request.Text = window->get<std::string>();
  if (request.Text != "entry" && request.Text != "output") return Wrong("The window is \"entry\" or \"output\"");
  if (!ReadNumber(value, "start", request.Start)) return Wrong("\"start\" is a number from 0");
  if (value.contains("length") && !ReadNumber(value, "length", request.Length))
    return Wrong("\"length\" is a number from 0");
  return request;
}

JsonRequest ReadGet(const Json& object, JsonRequest request) {
  if (std::find(Gettable.begin(), Gettable.end(), request.Text) == Gettable.end())
    return Wrong("\"" + request.Text + "\" is nothing to get");
  int32 number = 0;
  if (request.Text == "buffer") {
    if (!ReadNumber(object, "number", number) || number > 0x7FFF) return Wrong("A buffer has a \"number\" from 1");
    request.Number = static_cast<int16>(number);
  }
  return request;
}

struct TextRow {
  const char* Name;
  Kind What;
};
constexpr std::array<TextRow, 7> TextRows{{{"line", Kind::Line},
                                           {"key", Kind::Key},
                                           {"down", Kind::Down},
                                           {"up", Kind::Up},
                                           {"type", Kind::Type},
                                           {"get", Kind::Get},
                                           {"clipboard", Kind::Clipboard}}};

JsonRequest ReadText(const Json& object, const TextRow& row) {
  const Json& value = object.at(row.Name);
  if (!value.is_string()) return Wrong(std::string("\"") + row.Name + "\" takes a text");
  JsonRequest request;
  request.What = row.What;
  request.Text = value.get<std::string>();
  if (row.What == Kind::Key || row.What == Kind::Down || row.What == Kind::Up) return ReadKey(request);
  if (row.What == Kind::Get) return ReadGet(object, request);
  return request;
}

}  // namespace

JsonRequest ParseJsonRequest(std::string_view line) {
  const Json object = Json::parse(line.begin(), line.end(), nullptr, false);
  if (object.is_discarded()) return Wrong("This line is no JSON");
  if (!object.is_object()) return Wrong("This line is no JSON object");
  for (const TextRow& row : TextRows)
    if (object.contains(row.Name)) return ReadText(object, row);
  JsonRequest request;
  if (const auto wait = object.find("wait"); wait != object.end()) {
    if (!wait->is_number()) return Wrong("\"wait\" takes a number of seconds");
    request.What = Kind::Wait;
    request.Seconds = wait->get<double>();
    if (request.Seconds >= 0 && request.Seconds <= 3600) return request;
    return Wrong("\"wait\" takes 0 to 3600 seconds");
  }
  if (const auto select = object.find("select"); select != object.end()) return ReadSelect(*select);
  if (const auto close = object.find("close"); close != object.end()) {
    if (!close->is_boolean() || !close->get<bool>()) return Wrong("\"close\" takes true");
    request.What = Kind::Close;
    return request;
  }
  return Wrong("This object asks for nothing that is known");
}

}  // namespace corvid
