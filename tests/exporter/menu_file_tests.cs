using System;
using System.IO;
using System.Text;
using MenuScribe;

static class MenuFileTests {
  static byte[] bytes(string text) {
    return Encoding.ASCII.GetBytes(text);
  }

  public static void UnchangedFileIsLeftAlone() {
    using (Menus menus = new Menus()) {
      File.WriteAllBytes(menus.menuFile, bytes("same"));
      DateTime longAgo = new DateTime(2013, 1, 2, 3, 4, 5);
      File.SetLastWriteTime(menus.menuFile, longAgo);
      MenuFile.put(menus.menuFile, bytes("same"));
      Checks.equal(File.GetLastWriteTime(menus.menuFile), longAgo, "time");
      MenuFile.put(menus.menuFile, bytes("Same"));
      Checks.equal(File.ReadAllText(menus.menuFile), "Same", "contents");
    }
  }

  public static void ReaderOfTheOldFileKeepsItWhole() {
    using (Menus menus = new Menus()) {
      File.WriteAllBytes(menus.menuFile, bytes("old contents"));
      using (StreamReader reader = new StreamReader(
                 new FileStream(menus.menuFile, FileMode.Open, FileAccess.Read, FileShare.ReadWrite | FileShare.Delete))) {
        MenuFile.put(menus.menuFile, bytes("new"));
        Checks.equal(reader.ReadToEnd(), "old contents", "what was open");
      }
      Checks.equal(File.ReadAllText(menus.menuFile), "new", "what is there");
    }
  }

  public static void FileThatCannotBePutInPlaceLeavesNoTrace() {
    using (Menus menus = new Menus()) {
      Directory.CreateDirectory(menus.menuFile);
      bool isThrown = false;
      try {
        MenuFile.put(menus.menuFile, bytes("new"));
      } catch (Exception) {
        isThrown = true;
      }
      Checks.isTrue(isThrown, "it is told");
      Checks.equal(Directory.GetFileSystemEntries(Path.GetDirectoryName(menus.menuFile)).Length, 1, "entries");
    }
  }
}
