#include "common_sources/published_names.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

TEST(PublishedNames, ListIsEmptyAtFirst) {
  EXPECT_TRUE(PublishedNames().current().empty());
}

TEST(PublishedNames, ReaderSeesTheListLastPublished) {
  PublishedNames names;
  names.publish({"Model"});
  names.publish({"Sheet", "Model"});
  EXPECT_EQ(names.current(), (PublishedNames::Names{"Sheet", "Model"}));
}

TEST(PublishedNames, EqualListIsNotPublishedAgain) {
  PublishedNames names;
  names.publish({"Model"});
  const PublishedNames::Names* const beforeP = &names.current();
  names.publish({"Model"});
  EXPECT_EQ(&names.current(), beforeP);
}

TEST(PublishedNames, EarlierListStaysReadable) {
  PublishedNames names;
  names.publish({"Model"});
  const PublishedNames::Names& before = names.current();
  names.publish({"Sheet"});
  EXPECT_EQ(before, PublishedNames::Names{"Model"});
}

TEST(PublishedNames, ReaderAlwaysSeesAWholeList) {
  PublishedNames names;
  std::thread publisher([&] {
    for (std::size_t i = 0; i < 500; ++i) names.publish(PublishedNames::Names(i % 7 + 1, std::to_string(i)));
  });
  int broken = 0;
  for (int i = 0; i < 20000; ++i) {
    const PublishedNames::Names& list = names.current();
    for (const std::string& name : list) broken += name != list.front();
  }
  publisher.join();
  EXPECT_EQ(broken, 0);
}

}  // namespace
