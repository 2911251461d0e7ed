#include "packaging/lm_check/menu_check.h"

#include "common_sources/menu_table.h"
#include "config/cnfg.h"
#include "packaging/lm_check/file_lines.h"
#include "util/util.h"

#include <string_view>

namespace {

constexpr std::string_view kMenuBar = "MenuBar";

/// Two bytes or more that make one character of UTF-8, which hardly any text in a code page has by chance.
bool hasUtf8(std::string_view text) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    const auto first = static_cast<unsigned char>(text[i]), second = static_cast<unsigned char>(text[i + 1]);
    // A lead byte of UTF-8 and a continuation byte after it.
    if (first >= 0xC3 && first <= 0xF4 && (second & 0xC0u) == 0x80u) return true;
  }
  return false;
}

std::string what(const FileLine& line) {
  return "Menu file: line " + std::to_string(line.number) + ": '" + line.key + "' ";
}

void checkEntry(const FileLine& line, Findings& findings) {
  if (line.section != kMenuBar || line.key.empty() || line.kind != CnfgLine::Kind::kParameter) return;
  // A hidden entry first: whether it has a macro does not matter to the module.
  if (!line.isRead)
    findings.push_back({"menu.hidden", what(line) +
                                           "comes after a line that ends the section for the module, which "
                                           "does not read it; let the menu exporter write the file anew."});
  else if (!menuMacro(line.value))
    findings.push_back(
        {"menu.no-number", what(line) +
                               "has no text in braces with a macro behind it: it takes no "
                               "number, and the items after it have the numbers of those before them."});
}

}  // namespace

Findings checkMenu(const std::string& path) {
  if (!Util::fileExists(path))
    return {{"menu.missing",
             "Menu file: there is no readable file '" + path +
                 "', so that keys with menu items do nothing. It is written when AutoCAD starts with the "
                 "module and the menu exporter beside it."}};
  Findings findings;
  // Twice: as the module reads it, and by line, to name the places.
  const auto table = readMenuFile(path);
  const auto text = readFileText(path);
  // The file vanished after the first test; the next run reports it.
  if (!table || !text) return findings;
  // Alone: every other finding would follow from it.
  if (text->encoding == Encoding::kUtf16)
    return {{"menu.utf-16",
             "Menu file: it is stored as Unicode (UTF-16), of which the module can read nothing; let the "
             "menu exporter write it anew."}};
  if (table->modes.empty())
    findings.push_back({"menu.no-modes",
                        "Menu file: it has no section [Modes] with an entry, so that the module reads "
                        "it again ten times a second; let the menu exporter write it anew."});
  if (table->macros.empty())
    findings.push_back({"menu.empty",
                        "Menu file: no entry of [MenuBar] has a macro, so that keys with menu items do "
                        "nothing; let the menu exporter write it anew."});
  bool isUtf8 = false;
  for (const FileLine& line : text->lines) {
    checkEntry(line, findings);
    // One finding for the whole file, because the exporter writes it in one encoding.
    isUtf8 = isUtf8 || (line.isRead && hasUtf8(line.value));
  }
  if (isUtf8)
    findings.push_back({"menu.utf-8",
                        "Menu file: it has texts in UTF-8, which the module reads by Windows' code page, so "
                        "that their macros send wrong letters; let the menu exporter write it anew."});
  return findings;
}
