/// The module's file in the process, as the host loads and unloads it.
#ifndef TESTS_LOADED_MODULE_H
#define TESTS_LOADED_MODULE_H

#include <cstdint>
#include <string>

class LoadedModule {
 public:
  /// Maps the file. Throws std::runtime_error with the loader's words.
  explicit LoadedModule(const std::string& file);
  /// Unmaps it.
  ~LoadedModule();
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;

  /// The two exports.
  int send(int message, void* packetP = nullptr) const { return mEntryPoint(message, packetP); }
  std::uint32_t apiVersion(std::uint32_t argument = 0) const { return mApiVersion(argument); }
  /// The bytes that the second export begins with.
  const unsigned char* apiVersionCode() const { return reinterpret_cast<const unsigned char*>(mApiVersion); }

  /// Whether any part of the file is mapped in this process.
  static bool isMapped(const std::string& file);

 private:
  void* mHandleP;
  int (*mEntryPoint)(int, void*);
  std::uint32_t (*mApiVersion)(std::uint32_t);
};

#endif
