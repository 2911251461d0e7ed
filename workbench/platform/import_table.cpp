#include "workbench/platform/import_table.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace workbench {
namespace {

/// The structure at `offset` from the start of the image.
template <typename Structure>
Structure structureAt(HMODULE image, std::size_t offset) {
  Structure result{};
  // Copied, because the image gives no guarantee of alignment.
  std::memcpy(&result, reinterpret_cast<const std::uint8_t*>(image) + offset, sizeof result);
  return result;
}

const char* textAt(HMODULE image, std::size_t offset) {
  return reinterpret_cast<const char*>(image) + offset;
}

/// One entry for each library that the image imports from.
std::vector<IMAGE_IMPORT_DESCRIPTOR> importDescriptors(HMODULE image) {
  const auto dos = structureAt<IMAGE_DOS_HEADER>(image, 0);
  const auto headers = structureAt<IMAGE_NT_HEADERS64>(image, static_cast<std::size_t>(dos.e_lfanew));
  // Addresses in the tables are relative to the start of the image.
  const std::size_t table = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  std::vector<IMAGE_IMPORT_DESCRIPTOR> descriptors;
  if (table == 0) return descriptors;
  for (std::size_t at = table;; at += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
    const auto descriptor = structureAt<IMAGE_IMPORT_DESCRIPTOR>(image, at);
    // An empty entry ends the table; its size in the header is not reliable.
    if (descriptor.Name == 0) return descriptors;
    descriptors.push_back(descriptor);
  }
}

}  // namespace

std::vector<std::string> importedLibraries(HMODULE image) {
  std::vector<std::string> names;
  for (const IMAGE_IMPORT_DESCRIPTOR& descriptor : importDescriptors(image))
    names.emplace_back(textAt(image, descriptor.Name));
  return names;
}

void** importSlot(HMODULE image, const std::string& library, const std::string& function) {
  for (const IMAGE_IMPORT_DESCRIPTOR& descriptor : importDescriptors(image)) {
    // Linkers write library names with any letter case.
    if (_stricmp(textAt(image, descriptor.Name), library.c_str()) != 0) continue;
    if (descriptor.OriginalFirstThunk == 0) continue;  // a linker that keeps no names
    // The names stay in one list; the addresses, in the same order, are filled into the other.
    for (std::size_t i = 0;; ++i) {
      const std::size_t offset = i * sizeof(IMAGE_THUNK_DATA64);
      const auto name = structureAt<IMAGE_THUNK_DATA64>(image, descriptor.OriginalFirstThunk + offset);
      if (name.u1.AddressOfData == 0) break;
      // Imported by number, so there is no name to compare.
      if (IMAGE_SNAP_BY_ORDINAL64(name.u1.Ordinal)) continue;
      if (function == textAt(image, name.u1.AddressOfData + offsetof(IMAGE_IMPORT_BY_NAME, Name)))
        return reinterpret_cast<void**>(reinterpret_cast<std::uint8_t*>(image) + descriptor.FirstThunk +
                                        offset);
    }
  }
  return nullptr;
}

}  // namespace workbench
