// Keeps a file in use as a program does that has loaded it, until it is asked to end.
//   hold_file.exe PATH READY_FILE END_FILE
#include <windows.h>

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  // Mapped as an image, as a loaded module is.
  if (LoadLibraryExA(argv[1], nullptr, DONT_RESOLVE_DLL_REFERENCES) == nullptr) return 1;
  const HANDLE ready =
      CreateFileA(argv[2], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (ready == INVALID_HANDLE_VALUE) return 1;
  CloseHandle(ready);
  while (GetFileAttributesA(argv[3]) == INVALID_FILE_ATTRIBUTES) Sleep(20);
  return 0;
}
