#include "common_sources/pending_slot.h"

#include <gtest/gtest.h>

namespace {

TEST(PendingSlot, SlotHoldsItsFirstValue) {
  EXPECT_EQ(PendingSlot(-1).get().value, -1);
}

TEST(PendingSlot, NewestRequestWins) {
  PendingSlot slot(-1);
  slot.set(3);
  slot.set(4);
  EXPECT_EQ(slot.get().value, 4);
}

TEST(PendingSlot, ExecutedRequestIsCleared) {
  PendingSlot slot(-1);
  slot.set(3);
  slot.clear(slot.get(), -1);
  EXPECT_EQ(slot.get().value, -1);
}

TEST(PendingSlot, RequestThatCameMeanwhileIsKept) {
  PendingSlot slot(-1);
  slot.set(3);
  const PendingSlot::Request executed = slot.get();
  slot.set(4);
  slot.clear(executed, -1);
  EXPECT_EQ(slot.get().value, 4);
}

TEST(PendingSlot, SameRequestThatCameMeanwhileIsKeptToo) {
  PendingSlot slot(-1);
  slot.set(3);
  const PendingSlot::Request executed = slot.get();
  slot.set(3);
  slot.clear(executed, -1);
  EXPECT_EQ(slot.get().value, 3);
}

}  // namespace
