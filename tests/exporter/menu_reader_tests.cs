using System.IO;
using MenuScribe;
using Standin;

static class MenuReaderTests {
  static readonly string kLine = Menus.macro("ID_Line", "Line", "_line");
  static readonly string kArc = Menus.macro("ID_Arc", "Arc", "_arc");

  public static void WorkspaceGivesTheMenusAndTheirOrder() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD",
                  kLine + kArc + Menus.menu("PM_1", "POP1", "One", "I1 ID_Line") +
                      Menus.menu("PM_2", "POP2", "Two", "I2 ID_Arc") + Menus.menu("PM_3", "POP3", "Three", "I3 ID_Arc"),
                  Menus.workspace("Other", "ACAD PM_3 1") +
                      Menus.workspace("Mine", "ACAD PM_2 1", "ACAD PM_3 0", "ACAD PM_1 1"));
      HostControl.variables["WSCURRENT"] = "MINE";
      Checks.lines(menus.items(), "Two > Arc=_arc", "One > Line=_line");
    }
  }

  public static void AliasesGiveTheOrderWithoutTheWorkspace() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD",
                  kLine + kArc + Menus.menu("PM_1", "POP20", "One", "I1 ID_Line") +
                      Menus.menu("PM_2", "pop3", "Two", "I2 ID_Arc") + Menus.menu("PM_3", "", "Sub", "I3 ID_Arc"));
      Checks.lines(menus.items(), "Two > Arc=_arc", "One > Line=_line");
    }
  }

  public static void MenuOfAPartialFileIsFoundByItsGroup() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine + Menus.menu("PM_1", "POP1", "One", "I1 ID_Line"),
                  "<PartialCuiFile Name=\"tools.cuix\"/>" + Menus.workspace("W", "TOOLS PM_1 1", "ACAD PM_1 1"));
      menus.write("tools.cuix", "TOOLS", kArc + Menus.menu("PM_1", "POP1", "Tools", "I1 ID_Arc"));
      HostControl.variables["WSCURRENT"] = "W";
      Checks.lines(menus.items(), "Tools > Arc=_arc", "One > Line=_line");
      Checks.lines(menus.identifiers(), "TOOLS.I1", "ACAD.I1");
    }
  }

  public static void EnterpriseFileCountsToo() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine);
      menus.write("firm.cuix", "FIRM", kArc + Menus.menu("PM_1", "POP1", "Firm", "I1 ID_Arc") +
                                         Menus.menu("PM_2", "POP2", "Hidden", "I2 ID_Arc"),
                  Menus.workspace("W", "FIRM PM_1 1", "FIRM PM_2 0"));
      HostControl.variables["ENTERPRISEMENU"] = menus.file("firm.cuix");
      HostControl.variables["WSCURRENT"] = "W";
      Checks.lines(menus.items(), "Firm > Arc=_arc", "Other commands > Line=_line");
    }
  }

  public static void SubmenusAreUnfoldedAndSeparatorsLeftOut() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD",
                  kLine + kArc + Menus.menu("PM_1", "POP1", "One", "I1 ID_Line", "--", "->PM_2", "I2 ID_Line") +
                      Menus.menu("PM_2", "", "Sub", "I3 ID_Arc"));
      Checks.lines(menus.items(), "One > Line=_line", "One > Sub > Arc=_arc", "One > Line=_line");
    }
  }

  public static void MenuThatLeadsBackToItselfEnds() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD",
                  kLine + Menus.menu("PM_1", "POP1", "One", "->PM_2") +
                      Menus.menu("PM_2", "", "Two", "I1 ID_Line", "->PM_1", "->PM_None"));
      Checks.lines(menus.items(), "One > Two > Line=_line");
    }
  }

  public static void NamesComeFromItemMacroOrDisplay() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD",
                  kLine + Menus.menu("PM_1", "POP1", "&amp;One", "I1 ID_Line", "I2 ID_Line <Name>O&amp;wn</Name>",
                                     "I3 ID_Line <Name>$(if,1,x)</Name><DisplayName>Shown</DisplayName>",
                                     "I4 ID_Line <Name>$(if,1,x)</Name>"));
      Checks.lines(menus.items(), "One > Line=_line", "One > Own=_line", "One > Shown=_line", "One > Line=_line");
    }
  }

  public static void ReferenceToAMissingMacroHasNoMacro() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine + Menus.menu("PM_1", "POP1", "One", "I1 ID_Gone <Name>Gone</Name>"));
      Checks.lines(menus.items(), "One > Gone=", "Other commands > Line=_line");
    }
  }

  public static void OtherItemWithAMacroComesOnceUnderItsHeading() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD",
                  kLine + kArc + Menus.macro("ID_Box", "Box", "_box") + Menus.macro("ID_Pan", "Pan", "'_pan") +
                      Menus.macro("ID_Tool", "Tool", "_tool") + Menus.macro("ID_None", "None", "") +
                      Menus.menu("PM_1", "POP1", "One", "I1 ID_Line") +
                      Menus.menu("PM_S", "POP501", "Grips", "I2 ID_Line", "I3 ID_Pan") +
                      "<RibbonPanelSource UID=\"R1\" Name=\"Name\" Text=\"Solids\"><RibbonCommandButton MacroID=\"ID_Line\"/>" +
                      "<RibbonCommandButton MacroID=\"ID_Box\"/><RibbonCommandButton MacroID=\"ID_Gone\"/></RibbonPanelSource>");
      Checks.lines(menus.items(), "One > Line=_line", "Shortcut menus > Grips > Pan='_pan", "Ribbon > Solids > Box=_box",
                   "Other commands > Arc=_arc", "Other commands > Tool=_tool");
    }
  }

  public static void MainFileMayHaveItsExtension() {
    using (Menus menus = new Menus()) {
      menus.write("acad.CUIX", "ACAD", kLine);
      HostControl.variables["MENUNAME"] = menus.file("acad.CUIX");
      Checks.lines(menus.items(), "Other commands > Line=_line");
    }
  }

  public static void MissingPartialFileCostsItselfOnly() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine, "<PartialCuiFile Name=\"gone.cuix\"/>");
      Problems problems = new Problems();
      Checks.lines(menus.items(problems), "Other commands > Line=_line");
      Checks.equal(problems.summary(), "partial menu file '" + menus.file("gone.cuix") + "' not found", "problem");
    }
  }

  public static void BrokenPartialFileCostsItselfOnly() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine, "<PartialCuiFile Name=\"bad.cuix\"/>");
      File.WriteAllText(menus.file("bad.cuix"), "<CustSection>");
      Problems problems = new Problems();
      Checks.lines(menus.items(problems), "Other commands > Line=_line");
      Checks.isTrue(problems.summary().StartsWith("partial menu file '" + menus.file("bad.cuix") + "': not a valid"),
                    problems.summary());
    }
  }

  public static void FileThatIsListedTwiceIsReadOnce() {
    using (Menus menus = new Menus()) {
      menus.write("acad.cuix", "ACAD", kLine + Menus.menu("PM_1", "POP1", "One", "I1 ID_Line"),
                  "<PartialCuiFile Name=\"ACAD.cuix\"/>");
      Checks.lines(menus.items(), "One > Line=_line");
    }
  }

  public static void FileWithoutAMenuGroupIsReported() {
    using (Menus menus = new Menus()) {
      File.WriteAllText(menus.file("acad.cuix"), "<CustSection/>");
      Problems problems = new Problems();
      Checks.lines(menus.items(problems));
      Checks.equal(problems.summary(), "main menu file '" + menus.file("acad.cuix") + "': it has no menu group", "problem");
    }
  }
}
