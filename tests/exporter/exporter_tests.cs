using System;
using System.IO;
using System.Text;
using MenuScribe;
using Standin;

static class ExporterTests {
  const int kLookMs = 15000;
  static readonly Encoding kLatin = Encoding.GetEncoding(28591);
  static readonly string kLine = Menus.macro("ID_Line", "Line", "_line");
  static readonly string kArc = Menus.macro("ID_Arc", "Arc", "_arc");
  const string kEntry = "ACAD.ID_Line = {Other commands > Line}_line|";

  static int sNowMs;

  static Exporter started() {
    Exporter exporter = new Exporter(kLatin, () => sNowMs);
    exporter.start();
    return exporter;
  }

  static bool has(Menus menus, string line) {
    return File.Exists(menus.menuFile) && File.ReadAllText(menus.menuFile, kLatin).Contains(line + "\r\n");
  }

  static void pass(int ms) {
    sNowMs = unchecked(sNowMs + ms);
    HostControl.idle();
  }

  public static void FileIsWrittenAtTheFirstIdle() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      started();
      Checks.isTrue(!File.Exists(menus.menuFile), "nothing is written inside NETLOAD");
      HostControl.idle();
      Checks.isTrue(has(menus, kEntry), "the entry is there");
      Checks.lines(HostControl.printed);
      Checks.isTrue(!File.Exists(menus.log), "no failure, no log");
      Checks.equal(Directory.GetFiles(Path.GetDirectoryName(menus.menuFile)).Length, 1, "files");
    }
  }

  public static void NothingIsWrittenDuringACommand() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      started();
      HostControl.variables["CMDNAMES"] = "LINE";
      HostControl.idle();
      Checks.isTrue(!File.Exists(menus.menuFile), "during LINE");
      HostControl.variables["CMDNAMES"] = "";
      HostControl.idle();
      Checks.isTrue(has(menus, kEntry), "after it");
    }
  }

  public static void UnchangedMenusAreNotReadAgain() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      started();
      HostControl.idle();
      File.WriteAllText(menus.menuFile, "mark");
      for (int i = 0; i < 10; ++i) pass(kLookMs);
      Checks.equal(File.ReadAllText(menus.menuFile), "mark", "file");
    }
  }

  public static void ChangedMenuFileIsExportedAFewSecondsLater() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      sNowMs = int.MaxValue - 5000;
      started();
      HostControl.idle();
      menus.write("acad.cuix", "ACAD", kLine + kArc);
      pass(kLookMs - 1);
      Checks.isTrue(!has(menus, "ACAD.ID_Arc = {Other commands > Arc}_arc|"), "too early");
      pass(1);
      Checks.isTrue(has(menus, "ACAD.ID_Arc = {Other commands > Arc}_arc|"), "in time");
    }
  }

  public static void OtherWorkspaceIsExported() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine + Menus.menu("PM_1", "POP1", "One", "I1 ID_Line"),
                  Menus.workspace("A", "ACAD PM_1 1") + Menus.workspace("B", "ACAD PM_1 0"));
      HostControl.variables["WSCURRENT"] = "A";
      started();
      HostControl.idle();
      Checks.isTrue(has(menus, "ACAD.I1 = {One > Line}_line|"), "first");
      HostControl.variables["WSCURRENT"] = "B";
      pass(kLookMs);
      Checks.isTrue(has(menus, kEntry), "second");
    }
  }

  public static void PartialFileThatAppearsIsExported() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine, "<PartialCuiFile Name=\"tools.cuix\"/>");
      started();
      HostControl.idle();
      menus.write("tools.cuix", "TOOLS", kArc);
      pass(kLookMs);
      Checks.isTrue(has(menus, "TOOLS.ID_Arc = {Other commands > Arc}_arc|"), "partial menu");
    }
  }

  public static void RemovedFileIsWrittenAgain() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      started();
      HostControl.idle();
      File.Delete(menus.menuFile);
      pass(kLookMs);
      Checks.isTrue(has(menus, kEntry), "file");
    }
  }

  public static void CommandReportsWhatIsInTheFileAndWhatIsNot() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine + kArc + Menus.macro("ID_1", "A", "\\_line") + Menus.macro("ID_2", "B", "^B") +
                                           Menus.macro("ID_3", "C", "^C^C") + Menus.macro("ID_4", "D", "_d \\") +
                                           Menus.macro("ID_5", "E", "\\"));
      started().exportOnCommand();
      Checks.lines(HostControl.printed,
                   "\nMenu export: 3 of 7 menu items are in '" + menus.menuFile +
                       "'; left out: 1 only cancelling, 2 waiting for input first, 1 with control characters; 1 end " +
                       "where their macro waits for input\n");
    }
  }

  public static void UnreadableMainFileKeepsTheOldMenuFile() {
    using (Menus menus = new Menus()) {
      File.WriteAllText(menus.menuFile, "old");
      Exporter exporter = started();
      HostControl.idle();
      Checks.equal(File.ReadAllText(menus.menuFile), "old", "file");
      Checks.lines(HostControl.printed, "\nMenu export: main menu file '" + menus.file("acad.cuix") +
                                            "' not found; the menu file is as it was, LM_EXPORT_MENU tries again\n");
      Checks.isTrue(File.ReadAllText(menus.log).Contains("not found"), "log");
      exporter.exportOnCommand();
      Checks.equal(HostControl.printed.Count, 2, "lines after the command");
    }
  }

  public static void FailureIsReportedOnceAndNotTriedAgainBeforeAChange() {
    using (Menus menus = new Menus()) {
      started();
      for (int i = 0; i < 5; ++i) pass(kLookMs);
      Checks.equal(HostControl.printed.Count, 1, "lines");
      menus.write("acad.cuix", "ACAD", kLine);
      HostControl.variables["WSCURRENT"] = "W";
      pass(kLookMs);
      Checks.isTrue(has(menus, kEntry), "after the change");
    }
  }

  public static void MissingFolderIsReported() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      Directory.Delete(Path.GetDirectoryName(menus.menuFile));
      started();
      HostControl.idle();
      Checks.equal(HostControl.printed.Count, 1, "lines");
      Checks.isTrue(HostControl.printed[0].StartsWith("\nMenu export: menu file: Could not find a part of the path"),
                    HostControl.printed[0]);
    }
  }

  public static void ProfileThatIsNotSetIsReported() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      Environment.SetEnvironmentVariable("USERPROFILE", null);
      started();
      HostControl.idle();
      Checks.lines(HostControl.printed, "\nMenu export: menu file: USERPROFILE is not set; the menu file is as it was, " +
                                            "LM_EXPORT_MENU tries again\n");
    }
  }

  public static void SeveralProblemsAreOneLine() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine,
                  "<PartialCuiFile Name=\"a.cuix\"/><PartialCuiFile Name=\"b.cuix\"/><PartialCuiFile Name=\"c.cuix\"/>");
      started();
      HostControl.idle();
      Checks.lines(HostControl.printed, "\nMenu export: partial menu file '" + menus.file("a.cuix") +
                                            "' not found (and 2 more, see menu_exporter_log.txt)\n");
      Checks.isTrue(has(menus, kEntry), "the rest is written");
      Checks.isTrue(File.ReadAllText(menus.log).Contains("c.cuix' not found"), "log");
    }
  }

  public static void LineWithoutADrawingIsPrintedWhenOneIsOpen() {
    using (Menus menus = new Menus()) {
      started();
      HostControl.isDrawingOpen = false;
      HostControl.idle();
      Checks.equal(HostControl.printed.Count, 0, "lines without a drawing");
      HostControl.isDrawingOpen = true;
      HostControl.idle();
      HostControl.idle();
      Checks.equal(HostControl.printed.Count, 1, "lines");
    }
  }

  public static void BrokenCommandLineThrowsNothingIntoAutoCad() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      HostControl.isPrintingBroken = true;
      Exporter exporter = started();
      HostControl.idle();
      exporter.exportOnCommand();
      Checks.isTrue(has(menus, kEntry), "file");
    }
  }

  public static void AutoCadWithoutTheVariablesThrowsNothing() {
    using (Menus menus = new Menus()) {
      HostControl.variables.Clear();
      started();
      HostControl.idle();
      Checks.equal(HostControl.printed.Count, 1, "lines");
    }
  }

  public static void CustomizationFilesAreNeitherLockedNorChanged() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      string text = File.ReadAllText(menus.file("acad.cuix"));
      using (new FileStream(menus.file("acad.cuix"), FileMode.Open, FileAccess.ReadWrite, FileShare.ReadWrite)) {
        started();
        HostControl.idle();
      }
      Checks.isTrue(has(menus, kEntry), "read while another holds it");
      using (new FileStream(menus.file("acad.cuix"), FileMode.Open, FileAccess.ReadWrite, FileShare.None)) {}
      Checks.equal(File.ReadAllText(menus.file("acad.cuix")), text, "customization file");
    }
  }
}
