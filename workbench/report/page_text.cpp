#include "workbench/report/page_text.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

std::string dumped(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string validUtf8(std::string_view text) {
  // The JSON library already replaces broken UTF-8, so it is used for that instead of a second decoder.
  return Json::parse(dumped(Json(text))).get<std::string>();
}

}  // namespace

double rounded(double value, int digits) {
  if (!std::isfinite(value)) return value;
  char text[32];
  // By way of decimal text: multiplying by a power of ten would add an error of its own.
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, digits - 1);
  double result = value;
  std::from_chars(text, end.ptr, result);
  // Adding zero turns minus zero into zero.
  return result + 0.0;
}

std::string scriptJson(const Json& json) {
  // In JSON a `<` occurs only inside texts.
  std::string escaped;
  for (const char c : dumped(json))
    if (c == '<')
      escaped += "\\u003c";
    else
      escaped += c;
  return escaped;
}

std::string escapedForHtml(std::string_view text) {
  std::string escaped;
  // Quotes are not escaped: the text becomes the content of an element, never an attribute.
  for (const char c : validUtf8(text)) {
    if (c == '&')
      escaped += "&amp;";
    else if (c == '<')
      escaped += "&lt;";
    else if (c == '>')
      escaped += "&gt;";
    else
      escaped += c;
  }
  return escaped;
}

}  // namespace workbench
