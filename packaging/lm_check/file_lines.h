/// The lines of a settings or menu file as a person sees them, and which of them the module's reader reaches.
#ifndef PACKAGING_LM_CHECK_FILE_LINES_H
#define PACKAGING_LM_CHECK_FILE_LINES_H

#include "config/cnfg_line.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

struct FileLine {
  std::size_t number = 0;  ///< from 1
  CnfgLine::Kind kind = CnfgLine::Kind::kBlank;
  std::string text;
  std::string section;  ///< of the line, or begun by it; empty before the first header
  std::string key;
  std::string value;            ///< trimmed
  bool hasSeparator = false;    ///< between key and value
  bool endsParameters = false;  ///< the reader takes no parameter of the section after this line
  bool isRead = false;          ///< a parameter that the reader reaches
};

enum class Encoding { kBytes, kUtf8Mark, kUtf16 };

struct FileText {
  Encoding encoding = Encoding::kBytes;
  std::vector<FileLine> lines;
};

/// None when the file cannot be opened. UTF-16 is narrowed, so that what it holds can be shown and repaired;
/// the module reads nothing of such a file.
std::optional<FileText> readFileText(const std::string& path);

#endif
