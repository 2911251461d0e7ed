/// The name of a lock: a fixed field of 32 characters. A name that fills the field has no terminator in it.
#ifndef UTIL_LOCK_NAME_H
#define UTIL_LOCK_NAME_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

class LockName {
 public:
  /// Keeps at most the first 32 characters of `name`.
  explicit LockName(std::string_view name) {
    std::copy_n(name.data(), std::min(name.size(), mField.size()), mField.begin());
  }

  /// The field up to its first NUL, or all of it.
  std::string_view text() const {
    const auto* const endP = std::find(mField.begin(), mField.end(), '\0');
    return {mField.data(), static_cast<std::size_t>(endP - mField.begin())};
  }

 private:
  std::array<char, 32> mField = {};
};

#endif
