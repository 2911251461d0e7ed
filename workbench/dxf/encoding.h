/// The encoding of a DXF file's texts.
#ifndef WORKBENCH_DXF_ENCODING_H
#define WORKBENCH_DXF_ENCODING_H

#include "workbench/dxf/group.h"

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// Windows number of the code page that a file's texts are in: from the header variables $ACADVER (files from
/// AC1021 on are UTF-8) and $DWGCODEPAGE ("ANSI_932"). 0: not given, or not known.
int dxfCodePage(const std::vector<DxfGroup>& groups);

/// A text of the file as UTF-8. `\U+XXXX` is the character of that code, `\M+nXXXX` one of the code page 932,
/// 950, 949, 1361 or 936 for n from 1 to 5. Bytes that the code page does not have are kept when they are
/// UTF-8, and taken as Latin-1 otherwise.
std::string decodeDxfText(std::string_view bytes, int codePage);

}  // namespace workbench

#endif
