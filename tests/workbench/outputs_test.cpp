#include "workbench/running/outputs.h"

#include "tests/workbench/fake_module_process.h"
#include "workbench/running/moments.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

constexpr const char* kHeader =
    "time_ms,kind,viewport,cap_x,cap_y,cap_z,cap_rx,cap_ry,cap_rz,px,py,pz,tx,ty,tz,ux,uy,uz,field_width,"
    "field_height,projection\n";

TEST(Outputs, TrajectoryHasSeventeenDigits) {
  TrajectoryRow row;
  row.timeMs = 16;
  row.kind = RowKind::kPass3d;
  row.viewport = 2;
  row.cap = {1, -2, 3, -32768, 32767, 0};
  row.camera.position = {0.1, -0.0, 1e300};
  row.camera.isPerspective = true;
  EXPECT_EQ(
      trajectoryCsv({row}),
      std::string(kHeader) +
          "16,pass3d,2,1,-2,3,-32768,32767,0,0.10000000000000001,-0,1.0000000000000001e+300,0,0,0,0,1,0,1,1,"
          "perspective\n");
}

TEST(Outputs, EachKindOfRowHasAName) {
  std::string kinds;
  for (const RowKind kind :
       {RowKind::kStart, RowKind::kPass3d, RowKind::kCommit, RowKind::kView, RowKind::kPass2d}) {
    TrajectoryRow row;
    row.kind = kind;
    const std::string text = trajectoryCsv({row}).substr(std::string(kHeader).size());
    kinds += text.substr(0, text.find(',', 2)) + " ";
  }
  EXPECT_EQ(kinds, "0,start 0,pass3d 0,commit 0,view 0,pass2d ");
}

TEST(Outputs, EntitiesHaveTheirPoints) {
  const std::vector<EntityState> entities = {{0x2A, "LINE", "a,\"b\"", {{0, 0.5, 1}, {2, 3, 4}}},
                                             {0xFF, "CIRCLE", "0", {{1, 2, 3}}}};
  EXPECT_EQ(entitiesCsv(entities),
            "handle,type,layer,points\n2A,LINE,\"a,\"\"b\"\"\",0 0.5 1;2 3 4\nFF,CIRCLE,0,1 2 3\n");
}

TEST(Outputs, CommandLineLogEscapesTextAsJson) {
  const std::vector<CommandLineEntry> lines = {
      {1, LineKind::kSend, "a\"b\\\n"},     {2, LineKind::kSendActivate, "x "},
      {3, LineKind::kPrint, "\x1B\t"},      {4, LineKind::kHost, "Größe"},
      {5, LineKind::kBox, "caption\ntext"}, {6, LineKind::kBeep, "440 Hz, 200 ms"}};
  EXPECT_EQ(commandLineLog(lines),
            "1 send \"a\\\"b\\\\\\n\"\n2 send-activate \"x \"\n3 print \"\\u001b\\t\"\n4 host \"Größe\"\n"
            "5 box \"caption\\ntext\"\n6 beep \"440 Hz, 200 ms\"\n");
}

TEST(Outputs, MomentsAreSpreadEvenlyOverTheRun) {
  EXPECT_EQ(momentTimes(1000, 5), (std::vector<std::int64_t>{0, 250, 500, 750, 1000}));
  EXPECT_EQ(momentTimes(1000, 1), (std::vector<std::int64_t>{1000}));
  EXPECT_EQ(momentTimes(2, 9), (std::vector<std::int64_t>{0, 1, 2}));
  EXPECT_EQ(momentTimes(0, 60), (std::vector<std::int64_t>{0}));
}

TEST(Outputs, RunWritesItsFiles) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("10 key top\n300 end\n", "", "box");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(process.read("out/entities.csv"),
            "handle,type,layer,points\n2A,LINE,Walls,0 0 0;10 0 0\n"
            "2B,CIRCLE,\"a,\"\"b\"\"\",5 0.10000000000000001 0\n");
  EXPECT_EQ(process.read("out/commandline.log"),
            "0 beep \"440 Hz, 200 ms\"\n0 box \"Caption\\nText \\\"quoted\\\"\"\n0 print \"\\nfake\\n\"\n"
            "100 print \"\\nevent 131083\\n\"\n100 send \"'_-VIEW _TOP \"\n");
  EXPECT_EQ(
      process.read("out/summary.json"),
      "{\n  \"drawing\": \"a.dxf\",\n  \"session\": \"a.session\",\n  \"end_ms\": 300,\n  \"ended_by\": "
      "\"the end of the session\",\n  \"passes_3d\": 0,\n"
      "  \"passes_2d\": 0,\n  \"commits\": 0,\n  \"texts_sent\": 1,\n  \"prints\": 2,\n  \"locks\": 0,\n"
      "  \"unlocks\": 0,\n  \"lock_depth_at_end\": 0,\n  \"open_objects\": 0,\n"
      "  \"selection_sets_not_freed\": 0,\n  \"calls_off_main_thread\": 0,\n  \"reactors_left\": 0,\n"
      "  \"commands_left\": 0,\n  \"device_events_delivered\": 1,\n  \"device_events_not_fetched\": 0,\n"
      "  \"entities\": {\n    \"CIRCLE\": 1,\n    \"LINE\": 1\n  },\n"
      "  \"entities_not_understood\": {\n    \"TEXT\": 1\n  },\n  \"handles_not_found\": [],\n"
      "  \"moments_left_out\": 0,\n"
      "  \"host_breaches\": [],\n  \"host_breaches_in_all\": 0,\n"
      "  \"problems\": [],\n  \"clean\": true\n}\n");
}

}  // namespace
}  // namespace workbench
