// The operations of the support library as the real Windows carries them out.
#include "util/util.h"

#include "tests/support/temp_folder.h"
#include "util/native_file.h"
#include "util/threads.h"
#include "util/windows_util.h"
#include "workbench/platform/beeps.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

namespace {

/// Waits on a thread of its own for a message box of that caption, keeps its text and presses its button.
class BoxReader {
 public:
  explicit BoxReader(std::wstring caption) : mCaption(std::move(caption)), mThread([this] { read(); }) {}
  ~BoxReader() {
    mIsEnding = true;
    mThread.join();
  }
  /// Whether the box has been seen, be it gone by now.
  bool isFound() const { return mIsFound; }
  std::wstring text() {
    mIsEnding = true;
    if (mThread.joinable()) mThread.join();
    mThread = std::thread([] {});
    return mText;
  }

 private:
  void read() {
    while (!mIsEnding) {
      const HWND box = FindWindowW(L"#32770", mCaption.c_str());
      const HWND text = box != nullptr ? GetDlgItem(box, 0xFFFF) : nullptr;
      if (text == nullptr || !IsWindowVisible(box)) {
        Sleep(5);
        continue;
      }
      mIsFound = true;
      wchar_t buffer[300] = {};
      GetWindowTextW(text, buffer, 300);
      mText = buffer;
      PostMessageW(box, WM_COMMAND, IDOK, 0);
      return;
    }
  }

  std::wstring mCaption;
  std::wstring mText;
  std::atomic<bool> mIsFound{false};
  std::atomic<bool> mIsEnding{false};
  std::thread mThread;
};

TEST(WindowsBox, BoxIsShownAfterTheBeepAndReturnsTheButton) {
  std::vector<std::string> heard;
  BoxReader reader(L"A caption");
  workbench::interceptBeeps(GetModuleHandleW(nullptr));
  workbench::listenToBeeps([&heard, &reader](DWORD hertz, DWORD ms) {
    heard.push_back(std::to_string(hertz) + " Hz, " + std::to_string(ms) + " ms" +
                    (reader.isFound() ? ", late" : ""));
  });
  EXPECT_EQ(Util::beepAndShowMessage(nullptr, "A text", "A caption", MB_OK), IDOK);
  workbench::listenToBeeps({});
  EXPECT_EQ(reader.text(), L"A text");
  EXPECT_THAT(heard, testing::ElementsAre("440 Hz, 200 ms"));
}

TEST(WindowsBox, BoxShowsABytePastSevenBitsBySignExtension) {
  BoxReader reader(L"B");
  Util::beepAndShowMessage(nullptr, "a\xE4", "B", MB_OK);
  EXPECT_EQ(reader.text(), L"a\xFFE4");
}

TEST(WindowsFiles, FileHeldWithoutSharingIsLocked) {
  const TempFolder folder;
  folder.write("a.txt", "x");
  EXPECT_FALSE(Util::isFileLocked(folder.path("a.txt")));
  const HANDLE held = CreateFileA(folder.path("a.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(Util::isFileLocked(folder.path("a.txt")));
  CloseHandle(held);
  EXPECT_FALSE(Util::isFileLocked(folder.path("missing.txt")));
}

TEST(WindowsFiles, AppendedLinesEndInTheSystemsManner) {
  const TempFolder folder;
  NativeFile file;
  ASSERT_TRUE(file.openForAppending(folder.path("a.txt")));
  EXPECT_TRUE(file.write("one\ntwo\n"));
  EXPECT_EQ(file.position(), 10);
  file.close();
  ASSERT_TRUE(file.openForReading(folder.path("a.txt")));
  char text[16] = {};
  EXPECT_EQ(file.read(text, sizeof text), 10u);
  EXPECT_STREQ(text, "one\r\ntwo\r\n");
}

TEST(WindowsFiles, FileIsSharedWithOtherReadersAndWriters) {
  const TempFolder folder;
  NativeFile file, other;
  ASSERT_TRUE(file.openForAppending(folder.path("a.txt")));
  ASSERT_TRUE(other.openForAppending(folder.path("a.txt")));
  file.write("1");
  other.write("2");
  file.write("3");
  EXPECT_EQ(folder.read("a.txt"), "123");
}

TEST(WindowsFolders, FolderIsCopiedWithWhatIsInIt) {
  const TempFolder folder;
  std::filesystem::create_directories(folder.root() / "from" / "inner");
  std::filesystem::create_directory(folder.root() / "to");
  folder.write("from/a.txt", "a");
  folder.write("from/inner/b.txt", "b");
  testing::internal::CaptureStdout();
  EXPECT_EQ(WindowsUtil::copyFolder(folder.path("from"), folder.path("to")), 0);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(folder.read("to/a.txt"), "a");
  EXPECT_EQ(folder.read("to/inner/b.txt"), "b");
}

TEST(WindowsFolders, FolderIsRemovedWithWhatIsInIt) {
  const TempFolder folder;
  std::filesystem::create_directories(folder.root() / "gone" / "inner");
  folder.write("gone/inner/a.txt", "a");
  EXPECT_EQ(WindowsUtil::removeFolder(folder.path("gone")), 0);
  EXPECT_FALSE(folder.has("gone"));
}

/// Another process under a name of its own: this program's copy, which never gets to its first instruction.
class OtherProcess {
 public:
  explicit OtherProcess(const std::string& path) {
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::filesystem::copy_file(self, path);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    mIsRunning = CreateProcessW(std::filesystem::path(path).c_str(), nullptr, nullptr, nullptr, FALSE,
                                CREATE_SUSPENDED, nullptr, nullptr, &start, &mProcess);
  }
  ~OtherProcess() {
    if (!mIsRunning) return;
    TerminateProcess(mProcess.hProcess, 0);
    WaitForSingleObject(mProcess.hProcess, INFINITE);
    CloseHandle(mProcess.hThread);
    CloseHandle(mProcess.hProcess);
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;
  bool isRunning() const { return mIsRunning; }

 private:
  PROCESS_INFORMATION mProcess = {};
  bool mIsRunning = false;
};

TEST(WindowsProcesses, ProcessIsFoundByTheStartOfItsName) {
  const TempFolder folder;
  EXPECT_FALSE(WindowsUtil::isProcessRunning("other_program_to_find.exe"));
  {
    const OtherProcess other(folder.path("other_program_to_find.exe"));
    ASSERT_TRUE(other.isRunning());
    EXPECT_TRUE(WindowsUtil::isProcessRunning("other_program_to_find.exe"));
    EXPECT_TRUE(WindowsUtil::isProcessRunning("other_program_tree.exe"));
    EXPECT_FALSE(WindowsUtil::isProcessRunning("other_program_"));
    EXPECT_FALSE(WindowsUtil::isProcessRunning("other_programs"));
  }
  EXPECT_FALSE(WindowsUtil::isProcessRunning("other_program_to_find.exe"));
}

TEST(WindowsProcesses, ProcessDoesNotFindItself) {
  EXPECT_FALSE(WindowsUtil::isProcessRunning("windows_util_te"));
}

TEST(WindowsUser, UserHasTheNameThatTheSystemReports) {
  char name[300] = {};
  DWORD size = 300;
  ASSERT_TRUE(GetUserNameA(name, &size));
  EXPECT_EQ(WindowsUtil::getUserName(), name);
  EXPECT_NE(WindowsUtil::getUserName(), "");
}

class RegistryKeys : public testing::Test {
 protected:
  RegistryKeys() {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\LumetraTest", 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                    nullptr);
    RegCloseKey(key);
  }
  ~RegistryKeys() override { RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\LumetraTest"); }

  const std::string mKey = "Software\\LumetraTest";
};

TEST_F(RegistryKeys, RegistryKeepsTextValues) {
  EXPECT_TRUE(Registry::setValue(mKey, "name", "value \xE4"));
  EXPECT_EQ(Registry::value(mKey, "name"), "value \xE4");
  EXPECT_TRUE(Registry::deleteValue(mKey, "name"));
  testing::internal::CaptureStdout();
  EXPECT_EQ(Registry::value(mKey, "name"), std::nullopt);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "*** Error reading registry value 'name' in key 'Software\\LumetraTest' (Return code: 2!)\n");
}

TEST_F(RegistryKeys, RegistryReportsAValueThatCannotBeDeleted) {
  testing::internal::CaptureStdout();
  EXPECT_FALSE(Registry::deleteValue(mKey, "none"));
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "*** Error deleting registry value of 'Software\\LumetraTest' (Return code: 2!)\n");
}

TEST_F(RegistryKeys, RegistryReportsAKeyThatIsMissing) {
  testing::internal::CaptureStdout();
  EXPECT_FALSE(Registry::setValue("Software\\LumetraNone", "a", "b"));
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "*** Error opening registry key 'Software\\LumetraNone' (Return code: 2!)\n");
}

TEST_F(RegistryKeys, RegistryFindsThePathOfTheDaemon) {
  HKEY key = nullptr;
  const wchar_t path[] = L"C:\\Driver\\lm_daemon.exe";
  const wchar_t name[] = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\lm_daemon.exe";
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, name, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr),
            0);
  RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(path), sizeof path);
  RegCloseKey(key);
  EXPECT_EQ(Registry::daemonPath(), "C:\\Driver\\lm_daemon.exe");
  RegDeleteKeyW(HKEY_LOCAL_MACHINE, name);
}

TEST(RegistryNames, MainKeysHaveTheirNames) {
  EXPECT_STREQ(Registry::mainKeyName(HKEY_CLASSES_ROOT), "HKEY_CLASSES_ROOT");
  EXPECT_STREQ(Registry::mainKeyName(HKEY_CURRENT_USER), "HKEY_CURRENT_USER");
  EXPECT_STREQ(Registry::mainKeyName(HKEY_LOCAL_MACHINE), "HKEY_LOCAL_MACHINE");
  EXPECT_STREQ(Registry::mainKeyName(HKEY_USERS), "HKEY_USERS");
  EXPECT_STREQ(Registry::mainKeyName(HKEY_CURRENT_CONFIG), "HKEY_CURRENT_CONFIG");
  EXPECT_STREQ(Registry::mainKeyName(nullptr), "Unknown registry main key!");
}

TEST(WindowsThreads, ThreadsHaveTheSystemsNumbers) {
  EXPECT_EQ(currentThreadId(), GetCurrentThreadId());
  EXPECT_EQ(currentProcessId(), GetCurrentProcessId());
}

TEST(WindowsThreads, ThreadSleepsAtLeastAsLongAsRequested) {
  const auto before = std::chrono::steady_clock::now();
  sleepMs(30);
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(29));
}

}  // namespace
