// SPDX-License-Identifier: GPL-3.0-or-later
// Writing JSON, one object a line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvid {

// A JSON text in quotes. Bytes that are no UTF-8 are read as Windows-1252.
std::string JsonQuoted(std::string_view text);
std::string JsonTexts(const std::vector<std::string>& texts);   // an array of texts
std::string JsonArray(const std::vector<std::string>& values);  // an array of values that are JSON already

// Fields in the order in which they are added. Names are plain ASCII.
class JsonObject {
 public:
  JsonObject& Text(std::string_view name, std::string_view text) { return Raw(name, JsonQuoted(text)); }
  JsonObject& Number(std::string_view name, std::int64_t number) { return Raw(name, std::to_string(number)); }
  JsonObject& Flag(std::string_view name, bool flag) { return Raw(name, flag ? "true" : "false"); }
  JsonObject& Raw(std::string_view name, std::string_view json);
  std::string Done() const { return "{" + fields_ + "}"; }

 private:
  std::string fields_;
};

}  // namespace corvid
