/// Keeps what the host reports to its listener, in order; `= {}` forgets it. The thread that plays the host.
#ifndef TESTS_SUPPORT_HOST_RECORDER_H
#define TESTS_SUPPORT_HOST_RECORDER_H

#include "standin/objectarx/host_control.h"

#include <string>
#include <vector>

class HostRecorder : public standin::host::Listener {
 public:
  struct View : standin::host::Camera {
    int viewport;
  };
  struct Sheet : standin::host::PaperView {
    int viewport;
  };

  void viewUpdated(int viewport, const standin::host::Camera& camera) override {
    mUpdates.push_back({camera, viewport});
  }
  void viewCommitted(int viewport, const standin::host::Camera& camera) override {
    mCommits.push_back({camera, viewport});
  }
  void viewChanged(int viewport, const standin::host::Camera& camera) override {
    mChanges.push_back({camera, viewport});
  }
  void paperChanged(int viewport, const standin::host::PaperView& shown) override {
    mPaper.push_back({shown, viewport});
  }
  void textSent(const std::wstring& text, bool isActivating) override {
    mSent.push_back(text);
    mIsActivating.push_back(isActivating);
  }
  void modulePrinted(const std::wstring& text) override { mPrinted.push_back(text); }
  void hostPrinted(const std::wstring& text) override { mHostPrinted.push_back(text); }
  void assemblyLoaded(const std::wstring& path) override { mAssemblies.push_back(path); }

  std::vector<View> mUpdates;
  std::vector<View> mCommits;
  std::vector<View> mChanges;
  std::vector<Sheet> mPaper;
  std::vector<std::wstring> mSent;
  std::vector<bool> mIsActivating;  ///< of each text in mSent
  std::vector<std::wstring> mPrinted;
  std::vector<std::wstring> mHostPrinted;
  std::vector<std::wstring> mAssemblies;  ///< paths, as NETLOAD was given them
};

#endif
