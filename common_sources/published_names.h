/// A list of names that one thread replaces while another reads it, without a lock on either side.
#ifndef COMMON_SOURCES_PUBLISHED_NAMES_H
#define COMMON_SOURCES_PUBLISHED_NAMES_H

#include <atomic>
#include <memory>
#include <string>
#include <vector>

/// One publishing thread, any number of readers. A published list never changes and stays alive as long as
/// this object, because a reader may still use it.
class PublishedNames {
 public:
  using Names = std::vector<std::string>;

  /// Publishing thread. Equal names are not published again.
  void publish(const Names& names) {
    if (names == current()) return;
    mListsP.push_back(std::make_unique<const Names>(names));
    mCurrentP.store(mListsP.back().get(), std::memory_order_release);
  }

  /// Any thread. The list last published; valid as long as this object.
  const Names& current() const { return *mCurrentP.load(std::memory_order_acquire); }

 private:
  const Names mNone{};
  std::vector<std::unique_ptr<const Names>> mListsP;
  std::atomic<const Names*> mCurrentP{&mNone};
};

#endif
