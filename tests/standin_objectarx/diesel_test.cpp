#include "host_fixture.h"

namespace {

using namespace standin;

struct Case {
  const wchar_t* macro;
  const wchar_t* result;
};

/// A macro is seen through the name of the unknown command that it makes.
class Diesel : public HostTest {
 protected:
  std::wstring evaluate(const std::wstring& macro) {
    mHost.mHostPrinted.clear();
    std::wstring escaped;
    for (const wchar_t c : macro) {
      if (c == L'"') escaped += L'\\';
      escaped += c;
    }
    host::type(L"(command (menucmd \"M=" + escaped + L"\"))");
    if (mHost.mHostPrinted.empty()) return L"";
    const std::wstring& line = mHost.mHostPrinted[0];
    const std::size_t start = std::wstring(L"Unknown command \"").size();
    return line.substr(start, line.size() - start - 2);
  }
  void expectAll(const std::vector<Case>& cases) {
    for (const Case& c : cases) EXPECT_EQ(evaluate(c.macro), c.result) << std::wstring(c.macro).size();
  }
};

TEST_F(Diesel, DieselKeepsPlainText) {
  expectAll({{L"PLAIN", L"PLAIN"}, {L"$", L"$"}, {L"A$B", L"A$B"}, {L"", L""}});
}

TEST_F(Diesel, DieselReadsVariables) {
  expectAll({{L"T$(getvar,TILEMODE)", L"T1"}, {L"$(GETVAR,cvport)", L"2"}});
}

TEST_F(Diesel, DieselIfTakesItsBranch) {
  expectAll({{L"$(if,1,YES,NO)", L"YES"}, {L"$(if,0,YES,NO)", L"NO"}, {L"X$(if,0,YES)", L"X"}});
}

TEST_F(Diesel, DieselEqComparesTextAndTheEqualSignNumbers) {
  expectAll({{L"$(eq,1,1)", L"1"}, {L"$(eq,1,1.0)", L"0"}, {L"$(=,1,1.0)", L"1"}, {L"$(=,1,2)", L"0"}});
}

TEST_F(Diesel, DieselAddsAndSubtractsNumbers) {
  expectAll({{L"$(+,1,2,3)", L"6"}, {L"$(-,10,4,0.5)", L"5.5"}, {L"$(-,$(+,1,1),5)", L"-3"}});
}

TEST_F(Diesel, DieselKeepsQuotedText) {
  expectAll({{L"\"$(+,1,1)\"", L"$(+,1,1)"}, {L"\"A,B\"", L"A,B"}});
}

TEST_F(Diesel, DieselShowsMistakesInItsResult) {
  expectAll({{L"$(getvar,nosuch)",
              L"$(GETVAR,?"
              L"?)"},
             {L"$(getvar)",
              L"$(GETVAR,?"
              L"?)"},
             {L"$(if,x,A)",
              L"$(IF,?"
              L"?)"},
             {L"$(+,a)",
              L"$(+,?"
              L"?)"},
             {L"$(-)",
              L"$(-,?"
              L"?)"},
             {L"$(=,1)",
              L"$(=,?"
              L"?)"},
             {L"$(eq,1)",
              L"$(EQ,?"
              L"?)"},
             {L"$(upper,a)", L"$(UPPER)??"},
             {L"$(+,1", L"$?"},
             {L"\"A", L"$?"}});
}

TEST_F(Diesel, DieselStopsAtDeepNesting) {
  std::wstring macro;
  for (int i = 0; i < 500; ++i) macro += L"$(+,";
  EXPECT_EQ(evaluate(macro), L"$?");
}

}  // namespace
