// Tests of the exporter: each is a public static method without arguments; what it throws is its failure.
//
// usage: exporter_tests TEST...
using System;
using System.Collections.Generic;
using System.Reflection;

static class Checks {
  static int Main(string[] names) {
    int failures = 0;
    foreach (string name in names) failures += run(name);
    return names.Length == 0 || failures != 0 ? 1 : 0;
  }

  static int run(string name) {
    MethodInfo test = find(name);
    if (test == null) {
      Console.WriteLine("no test " + name);
      return 1;
    }
    Standin.HostControl.start();
    try {
      test.Invoke(null, null);
      return 0;
    } catch (TargetInvocationException failure) {
      Console.WriteLine(name + ": " + failure.InnerException);
      return 1;
    }
  }

  static MethodInfo find(string name) {
    foreach (Type type in Assembly.GetExecutingAssembly().GetTypes()) {
      MethodInfo method = type.GetMethod(name, BindingFlags.Public | BindingFlags.Static | BindingFlags.DeclaredOnly);
      if (method != null && type.Name.EndsWith("Tests", StringComparison.Ordinal)) return method;
    }
    return null;
  }

  public static void equal(object actual, object expected, string what) {
    if (!Equals(actual, expected))
      throw new InvalidOperationException(what + ": expected <" + expected + ">, found <" + actual + ">");
  }

  public static void isTrue(bool condition, string what) {
    if (!condition) throw new InvalidOperationException(what);
  }

  public static void lines(IEnumerable<string> actual, params string[] expected) {
    equal(string.Join("\n", new List<string>(actual).ToArray()), string.Join("\n", expected), "lines");
  }
}
