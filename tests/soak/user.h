/// A user who does everything at once at the host: documents, tabs, commands, the selection, the pointer. And
/// the faults that the host, Windows and the client library then have. Main thread.
#ifndef TESTS_SOAK_USER_H
#define TESTS_SOAK_USER_H

#include "tests/soak/random.h"

#include <cstdint>
#include <filesystem>

namespace soak {

class User {
 public:
  User(std::uint64_t seed, std::filesystem::path menuFile) : mRandom(seed), mMenuFile(std::move(menuFile)) {}

  /// One action, picked by chance.
  void act();

  /// Injects a fault into an operation, picked by chance.
  void injectFault();

  std::uint64_t faultsInjected() const { return mFaultsInjected; }
  std::uint64_t documentsOpened() const { return mDocumentsOpened; }

 private:
  void openDocument();
  void switchDocument();
  void closeDocument();
  void switchTab();
  void typeCommand();
  void select();
  void movePointer();
  void changeMenuFile();

  Random mRandom;
  std::filesystem::path mMenuFile;
  std::uint64_t mFaultsInjected = 0;
  std::uint64_t mDocumentsOpened = 0;
};

}  // namespace soak

#endif
