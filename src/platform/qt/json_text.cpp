// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/json_text.h"

#include "core/utf8.h"

namespace corvid {

std::string JsonQuoted(std::string_view text) {
  constexpr std::string_view Digits = "0123456789abcdef";
  std::string result = "\"";
  for (const char c : ToUtf8(text)) {
    const auto code = static_cast<unsigned char>(c);
    switch (c) {
      case '"':
        result += "\\\"";
        break;
      case '\\':
        result += "\\\\";
        break;
      case '\r':
        result += "\\r";
        break;
      case '\n':
        result += "\\n";
        break;
      case '\t':
        result += "\\t";
        break;
      default:
        if (code < 0x20 || code == 0x7F) {
          result += "\\u00";
          result += {Digits[code / 16], Digits[code % 16]};
        } else {
          result += c;
        }
    }
  }
  return result + "\"";
}

std::string JsonTexts(const std::vector<std::string>& texts) {
  std::vector<std::string> values;
  values.reserve(texts.size());
  for (const std::string& text : texts) values.push_back(JsonQuoted(text));
  return JsonArray(values);
}

std::string JsonArray(const std::vector<std::string>& values) {
  std::string result = "[";
  for (const std::string& value : values) {
    if (result.size() > 1) result += ",";
    result += value;
  }
  return result + "]";
}

JsonObject& JsonObject::Raw(std::string_view name, std::string_view json) {
  if (!fields_.empty()) fields_ += ",";
  fields_.append("\"").append(name).append("\":").append(json);
  return *this;
}

}  // namespace corvid
