/// Live sessions with the real module, by a page without a browser.
#include "tests/live/live_process.h"
#include "tests/support/workbench_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <random>
#include <sstream>

namespace {

using Json = nlohmann::json;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

const std::string kDrawing = LM_SAMPLES "/bracket.dxf";
const std::string kMenu = LM_SAMPLES "/autocad.mnu";

/// Time, position, target, up vector and fields of every row of a replay, by time.
using Views = std::multimap<std::int64_t, std::array<double, 11>>;

Views viewsOf(const std::string& trajectory) {
  Views views;
  std::istringstream lines(trajectory);
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) {
    std::vector<std::string> fields;
    std::istringstream parts(line);
    for (std::string part; std::getline(parts, part, ',');) fields.push_back(part);
    std::array<double, 11> view{};
    for (std::size_t i = 0; i < view.size(); ++i) view[i] = std::stod(fields.at(9 + i));
    views.emplace(std::stoll(fields.at(0)), view);
  }
  return views;
}

/// Coordinates of the points of an entity.
std::vector<double> pointsOf(const std::string& entities, const std::string& handle) {
  std::vector<double> points;
  std::istringstream rows(entities);
  for (std::string row; std::getline(rows, row);) {
    if (row.rfind(handle + ",", 0) != 0) continue;
    std::string text = row.substr(row.rfind(',') + 1);
    std::replace(text.begin(), text.end(), ';', ' ');
    std::istringstream numbers(text);
    for (double number = 0; numbers >> number;) points.push_back(number);
  }
  return points;
}

std::string fileText(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

std::array<double, 11> viewOf(const Json& picture) {
  std::array<double, 11> view{};
  for (std::size_t i = 0; i < view.size(); ++i) view[i] = picture.at("camera").at(i);
  return view;
}

/// Replays a session that a live one has saved.
class LiveReplay : public WorkbenchProcess {
 public:
  explicit LiveReplay(const std::string& session) {
    outcome = replay({kDrawing, session, kMenu, "replayed"});
    trajectory = read("replayed/trajectory.csv");
    entities = read("replayed/entities.csv");
  }
  Outcome outcome;
  std::string trajectory, entities;
};

class LiveSessionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    page = live.connect();
    hello = page->await("hello");
    page->await("state");
    page->await("scene");
  }

  /// Holds the cap until `count` more passes have been seen, and lets it go.
  void push(const std::string& axes, int count) {
    page->act("motion " + axes);
    for (int i = 0; i < count; ++i) awaitPicture();
    page->act("motion 0 0 0 0 0 0");
  }

  Json awaitPicture() {
    Json picture = page->await([this](const Json& message) {
      if (message.value("t", "") == "changed") changes.push_back(message);
      return message.value("t", "") == "picture" && message.contains("camera");
    });
    pictures.push_back(picture);
    return picture;
  }

  /// Waits until the picture stands still: the cap is at rest and everything before has happened.
  Json settle() {
    page->act("motion 0 0 0 0 0 1", ++marker);
    page->act("motion 0 0 0 0 0 0", ++marker);
    while (true) {
      const Json picture = awaitPicture();
      if (picture.at("done") == marker && picture.at("cap") == Json({0, 0, 0, 0, 0, 0})) return picture;
    }
  }

  std::string save() {
    page->send(R"({"save":true})");
    return page
        ->await([this](const Json& message) {
          if (message.value("t", "") == "picture" && message.contains("camera")) pictures.push_back(message);
          if (message.value("t", "") == "changed") changes.push_back(message);
          return message.value("t", "") == "saved" || message.value("t", "") == "error";
        })
        .at("text");
  }

  LiveProcess live{{"--drawing", kDrawing, "--menu", kMenu}};
  std::unique_ptr<PageClient> page;
  Json hello;
  std::vector<Json> pictures, changes;
  std::uint32_t marker = 0;
};

TEST_F(LiveSessionTest, CapMovesTheView) {
  page->act("motion 0 0 0 0 350 0", 1);
  const Json first = awaitPicture();
  Json later;
  for (int i = 0; i < 20; ++i) later = awaitPicture();
  EXPECT_NE(viewOf(first), viewOf(later));
  EXPECT_EQ(later.at("cap"), Json({0, 0, 0, 0, 350, 0}));
  EXPECT_EQ(later.at("done"), 1);
}

TEST_F(LiveSessionTest, PageThatVanishesLetsTheCapGo) {
  const auto watcher = live.connect();
  watcher->await("state");
  page->act("motion 0 0 0 0 350 0");
  const auto isAt = [](int value) {
    return [value](const Json& message) {
      return message.value("t", "") == "picture" && message.at("cap").at(4) == value;
    };
  };
  ASSERT_FALSE(watcher->await(isAt(350)).is_null());
  page->drop();
  bool isReleased = false, isFree = false;
  watcher->await([&](const Json& message) {
    isReleased = isReleased || isAt(0)(message);
    isFree = isFree || (message.value("t", "") == "state" && message.at("driver") == 0);
    return isReleased && isFree;
  });
  EXPECT_TRUE(isReleased);
  EXPECT_TRUE(isFree);
}

TEST_F(LiveSessionTest, PageThatFallsSilentLetsTheCapGo) {
  const auto watcher = live.connect();
  watcher->await("state");
  // It neither confirms pictures nor says that it is awake, as a page does that hangs.
  page->fallSilent();
  page->act("motion 0 0 0 0 350 0");
  bool wasDeflected = false;
  EXPECT_FALSE(watcher
                   ->await([&](const Json& message) {
                     if (message.value("t", "") != "picture") return false;
                     wasDeflected = wasDeflected || message.at("cap").at(4) == 350;
                     return wasDeflected && message.at("cap").at(4) == 0;
                   })
                   .is_null());
}

TEST_F(LiveSessionTest, TakingOverLetsTheCapGo) {
  const auto watcher = live.connect();
  const Json second = watcher->await("hello").at("page");
  page->act("motion 0 0 0 0 350 0");
  awaitPicture();
  watcher->send(R"({"take":true})");
  bool isReleased = false, isDriving = false;
  watcher->await([&](const Json& message) {
    isReleased = isReleased || (message.value("t", "") == "picture" && message.at("cap").at(4) == 0);
    isDriving = isDriving || (message.value("t", "") == "state" && message.at("driver") == second);
    return isReleased && isDriving;
  });
  EXPECT_TRUE(isReleased);
  EXPECT_TRUE(isDriving);
}

TEST_F(LiveSessionTest, MovedEntityIsWhereTheReplayLeavesIt) {
  page->act("select 100");
  page->act("command LM_Toggle_Object_Move_Mode");
  page->await([](const Json& m) { return m.value("t", "") == "state" && m.at("toggles").at(3) == true; });
  page->act("motion 20 0 0 0 30 0");
  for (int i = 0; i < 5; ++i) changes.push_back(page->await("changed"));
  page->act("motion 0 0 0 0 0 0");
  const LiveReplay replayed(save());
  Json line;
  for (const Json& change : changes)
    for (const Json& shape : change.at("shapes"))
      if (shape.at(0) == "100") line = shape.at(3).at(0);
  EXPECT_EQ(line.get<std::vector<double>>(), pointsOf(replayed.entities, "100"));
}

TEST_F(LiveSessionTest, PageThatWatchesMovesNothing) {
  const auto watcher = live.connect();
  watcher->await("state");
  watcher->act("motion 0 0 0 0 350 0", 1);
  watcher->act("setvar TILEMODE 0");
  watcher->send(R"({"settings":{"minThreshold":"1"}})");
  // Whoever drives comes after it, so what the other page asked for would have happened.
  page->act("command LM_Toggle_Object_Move_Mode");
  const Json state = watcher->await(
      [](const Json& m) { return m.value("t", "") == "state" && m.at("toggles").at(3) == true; });
  EXPECT_EQ(state.at("layout"), false);
  const auto rows = viewsOf(LiveReplay(save()).trajectory);
  for (const auto& [time, view] : rows) EXPECT_EQ(view, rows.begin()->second);
}

TEST_F(LiveSessionTest, NothingMovesForThoseWhoMayNot) {
  PageIdentity stranger{"/" + live.token() + "/ws", {}, "http://evil.example"};
  EXPECT_THROW(PageClient(live.port(), stranger), std::exception);
  stranger = {"/" + std::string(32, '0') + "/ws", {}, {}};
  EXPECT_THROW(PageClient(live.port(), stranger), std::exception);
  stranger = {"/" + live.token() + "/ws", "evil.example", {}};
  EXPECT_THROW(PageClient(live.port(), stranger), std::exception);
  const auto broken = live.connect();
  broken->sendRaw(std::string("\xF1\x81mask!", 7));
  EXPECT_TRUE(broken->isEnded());
  const auto other = live.connect();
  other->send(R"({"do":"document open /etc/passwd.dxf"})");
  EXPECT_TRUE(other->isEnded());
  const SilentConnections silent(live.port(), 100);
  const auto rows = viewsOf(LiveReplay(save()).trajectory);
  for (const auto& [time, view] : rows) EXPECT_EQ(view, rows.begin()->second);
}

TEST_F(LiveSessionTest, RefusedActionIsReportedAndNotRecorded) {
  page->act("setvar CVPORT 99");
  EXPECT_THAT(page->await("error").at("text"), HasSubstr("expected one of the system variables TILEMODE"));
  const LiveReplay replayed(save());
  EXPECT_EQ(replayed.outcome.status, 0) << replayed.outcome.err;
}

TEST_F(LiveSessionTest, SettingsChangeWhileThePageIsOpen) {
  page->send(R"({"settings":{"transSensBase":"10000","toggleRotationAxis":"on"}})");
  EXPECT_LT(page->await("loaded").at("ms"), 3000);
  const Json state = page->await("state");
  EXPECT_EQ(state.at("toggles").at(1), true);
  EXPECT_THAT(state.at("settings").dump(), HasSubstr(R"(["PROGRAM","transSensBase","10000",)"));
  // Twice as fast as with 20000: the field is 2 * 350 / 20000 narrower in each pass.
  push("0 0 350 0 0 0", 5);
  settle();
  const LiveReplay replayed(save());
  EXPECT_EQ(replayed.outcome.status, 0) << replayed.outcome.err;
  std::vector<double> widths;
  for (const auto& [time, view] : viewsOf(replayed.trajectory)) widths.push_back(view[9]);
  EXPECT_NEAR(widths.at(1) / widths.at(0), 1 / 1.035, 1e-9);
}

TEST_F(LiveSessionTest, UnknownSettingIsRefused) {
  page->send(R"({"settings":{"speed":"10000"}})");
  EXPECT_THAT(page->await("error").at("text"), HasSubstr("expected a setting of the module"));
}

TEST_F(LiveSessionTest, ScrollingShowsInThePicture) {
  page->act("pointer tree");
  page->act("motion 0 0 0 0 0 0");
  page->act("motion 0 -350 0 0 0 0");
  const Json scrolled = page->await([](const Json& message) {
    if (message.value("t", "") != "picture") return false;
    const Json& bars = message.at("bars");
    return bars.at(0).at(0) == "SysTreeView32" && bars.at(0).at(1).at(3) > 3;
  });
  EXPECT_FALSE(scrolled.is_null());
}

TEST_F(LiveSessionTest, CtrlCUnloadsTheModuleAndSavesTheSession) {
  push("0 0 350 0 0 0", 5);
  page->act("motion 0 350 0 0 0 0");
  awaitPicture();
  const LiveProcess::Ending ending = live.interrupt();
  EXPECT_EQ(ending.status, 0) << ending.err;
  EXPECT_THAT(ending.out, MatchesRegex("The module is unloaded and the session saved: .*\\.session\n"));
  EXPECT_EQ(ending.err, "");
  const std::string file =
      ending.out.substr(ending.out.find("/"), ending.out.size() - ending.out.find("/") - 1);
  const LiveReplay replayed(file);
  EXPECT_EQ(replayed.outcome.status, 0) << replayed.outcome.err;
}

TEST_F(LiveSessionTest, ReportIsMadeWhileTheSessionGoesOn) {
  push("0 0 350 0 0 0", 5);
  page->send(R"({"report":true})");
  const Json report =
      page->await([](const Json& m) { return m.value("t", "") == "report" || m.value("t", "") == "error"; });
  ASSERT_EQ(report.at("t"), "report") << report;
  EXPECT_TRUE(std::filesystem::exists(report.at("text").get<std::string>()));
  push("0 0 -350 0 0 0", 5);
}

TEST(LiveDrawings, NameInCapitalsIsOpened) {
  const std::filesystem::path second = std::filesystem::path(::testing::TempDir()) / "LIVE_SECOND.DXF";
  std::filesystem::copy_file(kDrawing, second, std::filesystem::copy_options::overwrite_existing);
  const LiveProcess live({"--drawing", kDrawing, second.string(), "--menu", kMenu});
  const auto page = live.connect();
  const Json first = page->await("scene");
  page->send(R"({"open":1})");
  const Json scene = page->await("scene");
  EXPECT_EQ(scene.at("name"), "LIVE_SECOND.DXF");
  EXPECT_EQ(scene.at("shapes").size(), first.at("shapes").size());
}

TEST(LiveProfile, SavedSessionHasTheProfileThatItNames) {
  const std::filesystem::path profile = std::filesystem::path(::testing::TempDir()) / "live_profile";
  const std::filesystem::path settings = "Lumetrapad/Applications/autocad_addin.ini";
  const std::string text = "[PROGRAM]\ntransSensBase = 10000\n";
  std::filesystem::create_directories((profile / settings).parent_path());
  std::ofstream(profile / settings) << text;
  const LiveProcess live({"--drawing", kDrawing, "--menu", kMenu, "--profile", profile.string()});
  const auto page = live.connect();
  page->await("hello");
  page->send(R"({"save":true})");
  const std::filesystem::path session = page->await("saved").at("text").get<std::string>();
  std::filesystem::path saved = session;
  saved.replace_extension(".profile");
  EXPECT_THAT(fileText(session), HasSubstr("--profile " + saved.string()));
  EXPECT_EQ(fileText(saved / settings), text);
}

/// What a user may do, at random; the replay of what was saved ends in the last view and passes through views
/// that were shown.
TEST_F(LiveSessionTest, SavedSessionPlaysToTheSameViews) {
  std::mt19937 random(20130101);
  const auto pick = [&random](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  const std::vector<std::string> actions = {"key top",
                                            "key front",
                                            "key fit",
                                            "rotmode 10 zoom on",
                                            "rotmode 1 zoom off",
                                            "rotmode 100 zoom off",
                                            "select all",
                                            "select 100",
                                            "select none",
                                            "command LM_Toggle_Object_Move_Mode",
                                            "command LINE 0,0,0 30,0,40 ",
                                            "command CIRCLE 10,10 5",
                                            "projection perspective",
                                            "projection parallel",
                                            "function 8",
                                            "pointer tree",
                                            "pointer canvas",
                                            "device down",
                                            "device up",
                                            "command LM_Toggle_Rotation_Axis",
                                            "setvar TILEMODE 0",
                                            "setvar TILEMODE 1",
                                            "command _ZOOM _ALL"};
  for (int i = 0; i < 30; ++i) {
    std::string motion = "motion";
    for (int axis = 0; axis < 6; ++axis)
      motion += " " + std::to_string(pick(0, 2) == 0 ? pick(-350, 350) : 0);
    page->act(motion, ++marker);
    if (i % 2 == 0)
      page->act(actions[static_cast<std::size_t>(pick(0, static_cast<int>(actions.size()) - 1))]);
    if (i == 15) page->send(R"({"settings":{"rotSensBase":"5000"}})");
    // As long as a user holds the cap: some pictures, also ones that show no change but of the cap.
    for (int k = pick(0, 8); k > 0; --k)
      page->await(
          [this](const Json& message) {
            if (message.value("t", "") == "changed") changes.push_back(message);
            if (message.value("t", "") != "picture") return false;
            if (message.contains("camera")) pictures.push_back(message);
            return true;
          },
          std::chrono::milliseconds(50));
  }
  for (const char* line : {"device up", "setvar TILEMODE 1", "pointer canvas"}) page->act(line);
  const Json last = settle();
  const std::string file = save();
  const LiveReplay replayed(file);
  ASSERT_EQ(replayed.outcome.status, 0) << replayed.outcome.err;

  const Views views = viewsOf(replayed.trajectory);
  EXPECT_EQ(viewOf(last), views.rbegin()->second);
  std::size_t found = 0;
  for (const Json& picture : pictures) {
    const auto [begin, end] = views.equal_range(picture.at("time").get<std::int64_t>());
    for (auto at = begin; at != end; ++at)
      if (at->second == viewOf(picture)) {
        ++found;
        break;
      }
  }
  EXPECT_GT(found, 20U);
}

}  // namespace
