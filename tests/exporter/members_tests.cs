using System;
using MenuScribe;

static class MembersTests {
  public class Mixed {
    public string Field = "field";
    public string Property { get { return "property"; } }
    public string Broken { get { throw new InvalidOperationException("no"); } }
    public int Number { get { return 7; } }
  }

  public static void PropertiesAndFieldsAreReadByName() {
    Problems problems = new Problems();
    Members members = new Members(problems);
    Checks.equal(members.text(new Mixed(), "Field"), "field", "field");
    Checks.equal(members.text(new Mixed(), "Property"), "property", "property");
    Checks.equal(members.text(new Mixed(), "Number"), "7", "number");
    Checks.equal(members.text(null, "Field"), "", "nothing");
    Checks.equal(problems.count, 0, "problems");
  }

  public static void MissingMemberIsReportedOnceByName() {
    Problems problems = new Problems();
    Members members = new Members(problems);
    Checks.equal(members.value(new Mixed(), "Gone"), null, "value");
    Checks.equal(members.text(new Mixed(), "Gone"), "", "text");
    Checks.equal(problems.count, 1, "problems");
    Checks.equal(problems.summary(), "AutoCAD's Mixed has no Gone", "text of the problem");
  }

  public static void MemberThatThrowsIsReported() {
    Problems problems = new Problems();
    Checks.equal(new Members(problems).text(new Mixed(), "Broken"), "", "text");
    Checks.equal(problems.summary(), "AutoCAD's Mixed.Broken fails: no", "problem");
  }

  public static void ProblemIsReportedOnce() {
    Problems problems = new Problems();
    problems.add("one");
    problems.add("one");
    Checks.equal(problems.summary(), "one", "summary");
  }

  public static void LogBeginsAnewWhenItIsTooLong() {
    using (Menus menus = new Menus()) {
      System.IO.File.WriteAllText(menus.log, new string('x', 300 * 1024));
      FailureLog.write("one", null);
      FailureLog.write("two", new InvalidOperationException("cause"));
      string text = System.IO.File.ReadAllText(menus.log);
      Checks.isTrue(text.Length < 1000 && text.Contains("one") && text.Contains("two") && text.Contains("cause"), text);
    }
  }
}
