#include "workbench/app.h"
#include "workbench/text_input.h"

#include <windows.h>
#include <shellapi.h>

#include <iostream>

/// The arguments that main() gets are cut to the ANSI code page; a file may be named beyond it.
int main() {
  int count = 0;
  LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> texts;
  // Argument 0 is the program's name. It may have been set by the caller and says nothing.
  for (int i = 1; i < count; ++i) texts.push_back(workbench::toUtf8(std::wstring_view(arguments[i])));
  LocalFree(arguments);
  return workbench::runWorkbench(texts, std::cout, std::cerr);
}
