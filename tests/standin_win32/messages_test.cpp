#include "standin_messages.h"
#include "windows.h"

#include <gtest/gtest.h>

namespace {

using standin::windows::UserMessage;

class UserMessages : public testing::Test {
 protected:
  void SetUp() override { standin::windows::clearUserMessages(); }
  void TearDown() override { standin::windows::setUserMessageListener({}); }
};

TEST_F(UserMessages, MessagesAreRecordedInOrder) {
  EXPECT_EQ(Beep(440, 200), TRUE);
  EXPECT_EQ(MessageBoxW(nullptr, L"Text", L"Caption", MB_OK | MB_ICONERROR), IDOK);
  const auto messages = standin::windows::userMessages();
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0].kind, UserMessage::Kind::kBeep);
  EXPECT_EQ(messages[0].frequency, 440u);
  EXPECT_EQ(messages[0].durationMs, 200u);
  EXPECT_EQ(messages[1].kind, UserMessage::Kind::kBox);
  EXPECT_EQ(messages[1].caption, L"Caption");
  EXPECT_EQ(messages[1].text, L"Text");
  EXPECT_EQ(messages[1].type, MB_ICONERROR);
}

TEST_F(UserMessages, ListenerGetsEachMessageAtOnce) {
  std::vector<std::wstring> heard;
  standin::windows::setUserMessageListener(
      [&heard](const UserMessage& message) { heard.push_back(message.text); });
  MessageBoxW(nullptr, L"one", nullptr, MB_OK);
  MessageBoxW(nullptr, nullptr, nullptr, MB_OK);
  EXPECT_EQ(heard, (std::vector<std::wstring>{L"one", L""}));
}

TEST_F(UserMessages, BoxReturnsTheButtonThatWasSet) {
  standin::windows::setBoxAnswer(0);
  EXPECT_EQ(MessageBoxW(nullptr, L"", L"", MB_OK), 0);
  standin::windows::clearUserMessages();
  EXPECT_EQ(MessageBoxW(nullptr, L"", L"", MB_OK), IDOK);
}

TEST_F(UserMessages, BeepOutsideTheRangeFailsAndIsNotRecorded) {
  EXPECT_EQ(Beep(36, 1), FALSE);
  EXPECT_EQ(Beep(32768, 1), FALSE);
  EXPECT_TRUE(standin::windows::userMessages().empty());
}

}  // namespace
