#include "device/special_functions.h"
#include "workbench/input_error.h"
#include "workbench/sessions/session.h"
#include "workbench/text_input.h"

#include <limits>

namespace workbench {
namespace {

/// One line of the file, read word by word from the left. Every error names the line.
class SessionLine {
 public:
  SessionLine(FilePlace place, std::string_view text) : mPlace(place), mRest(trimmed(text)) {}

  bool isAtEnd() const { return mRest.empty(); }
  std::string_view remaining() const { return mRest; }

  std::string_view word(const std::string& expected) {
    if (mRest.empty()) throw error(expected, "the end of the line");
    const std::string_view result = mRest.substr(0, mRest.find_first_of(" \t"));
    mRest = trimmed(mRest.substr(result.size()));
    return result;
  }

  std::string_view rest(const std::string& expected) {
    if (mRest.empty()) throw error(expected, "the end of the line");
    const std::string_view result = mRest;
    mRest = {};
    return result;
  }

  long long integer(const std::string& name, long long lowest, long long highest) {
    const std::string expected =
        name + " (a whole number, " + std::to_string(lowest) + " to " + std::to_string(highest) + ")";
    const std::string_view text = word(expected);
    const auto value = parseInteger(text);
    if (!value || *value < lowest || *value > highest) throw error(expected, inQuotes(text));
    return *value;
  }

  /// One of the names; the message lists them all.
  template <typename Choices>
  auto oneOf(const Choices& choices) {
    std::string expected = "one of";
    for (const auto& choice : choices) expected += std::string(" ") + choice.name;
    const std::string_view text = word(expected);
    for (const auto& choice : choices)
      // Exact, with letter case: one way to write a verb keeps sessions searchable.
      if (choice.name == text) return choice.value;
    throw error(expected, inQuotes(text));
  }

  void end() const {
    if (!mRest.empty()) throw error("the end of the line", inQuotes(mRest));
  }

  InputError error(const std::string& expected, const std::string& found) const {
    return {mPlace, expected, found};
  }

 private:
  FilePlace mPlace;
  std::string_view mRest;
};

constexpr long long kHighestCode = std::numeric_limits<std::int32_t>::max();
constexpr long long kMostViewports = 32767;
constexpr long long kLowestCode = std::numeric_limits<std::int32_t>::min();

constexpr Named<bool> kOnOff[] = {{"on", true}, {"off", false}};
constexpr Named<bool> kDownUp[] = {{"down", true}, {"up", false}};
constexpr Named<bool> kProjections[] = {{"parallel", false}, {"perspective", true}};
// A fixed word that makes the line readable. A list of one name gives it the usual message.
constexpr Named<int> kZoom[] = {{"zoom", 0}};

/// The device's keys, by the names of their functions.
std::vector<Named<std::int32_t>> keys() {
  std::vector<Named<std::int32_t>> result;
  for (const SpecialFunction& function : kSpecialFunctions)
    result.push_back({function.nameP, function.eventCode});
  return result;
}

class SessionParser {
 public:
  using VerbParser = void (SessionParser::*)(SessionLine&);

  /// A verb: adding one is a row here, its section of docs/sessions.md, and, if it brings a new kind of
  /// action, the code that performs it.
  struct Verb {
    const char* name;
    VerbParser value;
    const char* arguments;
  };
  static const std::vector<Verb>& verbs();

  explicit SessionParser(const std::string& file) { mSession.file = file; }

  void parseLine(std::size_t number, std::string_view text) {
    // Sessions written on Windows have CR LF ends.
    if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
    // A comment begins at any "#", so no text of a session can contain that character.
    SessionLine line({mSession.file, number}, text.substr(0, text.find('#')));
    if (line.isAtEnd()) return;
    mLine = number;
    // Comments and blank lines after the end are fine, events are a mistake of the author.
    if (mIsEnded) throw line.error("nothing after the event \"end\"", inQuotes(line.rest("")));
    parseTime(line);
    // Stored before the verb is read, because reading consumes the line.
    mSession.events.push_back({mSession.endMs, number, toUtf8(line.remaining())});
    parseVerb(line);
    line.end();
  }

  Session take() { return std::move(mSession); }

 private:
  void parseTime(SessionLine& line) {
    const std::string expected = "a time in ms (a whole number, 0 to " + std::to_string(kLatestEventMs) + ")";
    const std::string_view text = line.word(expected);
    const auto time = parseInteger(text);
    if (!time || *time < 0 || *time > kLatestEventMs) throw line.error(expected, inQuotes(text));
    // Equal times are allowed; the events then happen in the order of their lines.
    if (*time < mSession.endMs)
      throw line.error("a time not before " + std::to_string(mSession.endMs), inQuotes(text));
    mSession.endMs = *time;
  }

  void parseVerb(SessionLine& line) { (this->*line.oneOf(verbs()))(line); }

  void parseAdvancedSettings(SessionLine& line) {
    AdvancedSettings settings;
    // The digits are not checked further: a session may try codes that the module has to reject.
    settings.rotationMode = static_cast<std::int32_t>(line.integer("a rotation-mode code", 0, 999));
    line.oneOf(kZoom);
    settings.isZoomAfterView = line.oneOf(kOnOff);
    addDevice(settings);
  }

  void parseMotion(SessionLine& line) {
    static constexpr std::array<const char*, 6> kAxes = {"x", "y", "z", "rx", "ry", "rz"};
    for (std::size_t i = 0; i < kAxes.size(); ++i)
      // The whole 16-bit range, far beyond what the cap can reach: the module's limits are to be tried.
      mCap[i] = static_cast<std::int16_t>(line.integer(kAxes[i], std::numeric_limits<std::int16_t>::min(),
                                                       std::numeric_limits<std::int16_t>::max()));
    // Every negative code means motion; the daemon sends -1.
    addDevice(DeviceEvent{-1, mCap});
  }

  void parseKey(SessionLine& line) { addDevice(DeviceEvent{line.oneOf(keys()), {}}); }

  void parseFunction(SessionLine& line) {
    // The upper limit keeps the sum below 32 bits. A number without a menu entry is allowed and has to do no
    // harm.
    const long long number = line.integer("an application function", 0, kHighestCode - APPL_FUNC_START);
    addDevice(DeviceEvent{static_cast<std::int32_t>(APPL_FUNC_START + number), {}});
  }

  void parseEvent(SessionLine& line) {
    const std::string expected = "an event code (32 bits, decimal or 0x...)";
    const std::string_view text = line.word(expected);
    std::optional<long long> code;
    if (text.substr(0, 2) == "0x") {
      if (const auto hex = parseHex(text.substr(2));
          hex && *hex <= static_cast<unsigned long long>(kHighestCode))
        // Hexadecimal codes have no sign; motion can only be written as a negative decimal.
        code = static_cast<long long>(*hex);
    } else {
      code = parseInteger(text);
    }
    if (!code || *code < kLowestCode || *code > kHighestCode) throw line.error(expected, inQuotes(text));
    DeviceEvent event{static_cast<std::int32_t>(*code), {}};
    // A motion code repeats the last deflection of the session.
    if (event.code < 0) event.axes = mCap;
    addDevice(event);
  }

  void parseDevice(SessionLine& line) { addDevice(DevicePower{line.oneOf(kDownUp)}); }

  void parseSelect(SessionLine& line) {
    const std::string expected = "all, none or handles (hexadecimal)";
    std::string_view text = line.word(expected);
    Select select;
    if (text == "all" || text == "none") {
      select.kind = text == "all" ? Select::Kind::kAll : Select::Kind::kNone;
      return addUser(select);
    }
    select.kind = Select::Kind::kHandles;
    while (true) {
      const auto handle = parseHex(text);
      // Handle 0 means "none" in drawings and cannot be selected.
      if (!handle || *handle == 0) throw line.error(expected, inQuotes(text));
      select.handles.push_back(*handle);
      if (line.isAtEnd()) break;
      text = line.word(expected);
    }
    addUser(select);
  }

  // The rest of the line with the blanks in it: on the command line a blank is an Enter.
  void parseCommand(SessionLine& line) { addUser(Command{toUtf8(line.rest("a command"))}); }

  // A command line cannot begin with a blank, so the Enter that ends a LINE has a verb of its own.
  void parseEnter(SessionLine&) { addUser(Command{}); }

  void parseSetVariable(SessionLine& line) {
    SetVariable set;
    set.name = toUtf8(line.word("the name of a system variable"));
    set.value = toUtf8(line.word("a value for " + inQuotes(set.name)));
    addUser(set);
  }

  void parseProjection(SessionLine& line) { addUser(SetProjection{line.oneOf(kProjections)}); }

  void parsePointer(SessionLine& line) { addUser(MovePointer{line.oneOf(kPointerTargets)}); }

  void parseDocument(SessionLine& line) {
    const std::string expected = "open, close or the name of a document";
    const std::string text(line.rest(expected));
    // The whole line decides, so a document named "close it" can be switched to.
    if (text == "close") return addUser(SetDocument{});
    const std::string_view verb = std::string_view(text).substr(0, text.find_first_of(" \t"));
    // What is not "open" is the name of a document, which may contain blanks.
    if (verb != "open") return addUser(SetDocument{SetDocument::Kind::kSwitch, toUtf8(text)});
    const std::string_view name = trimmed(std::string_view(text).substr(verb.size()));
    if (name.empty()) throw line.error("the name of a document", "the end of the line");
    addUser(SetDocument{SetDocument::Kind::kOpen, toUtf8(name)});
  }

  void parseViewport(SessionLine& line) {
    addUser(SetViewport{static_cast<int>(line.integer("the number of a viewport", 1, kMostViewports))});
  }

  void parseSetting(SessionLine& line) {
    ChangeSetting change;
    change.key = line.word("the name of a setting");
    // A setting may be an empty text.
    if (!line.isAtEnd()) change.value = line.rest("");
    addUser(std::move(change));
  }

  void parseReload(SessionLine&) { addUser(LoadAgain{}); }

  void parseMenu(SessionLine&) { addUser(WriteMenu{}); }

  void parseEnd(SessionLine&) { mIsEnded = true; }

  void addDevice(const DeviceAction& action) { mSession.device.push_back({mSession.endMs, mLine, action}); }
  void addUser(UserAction action) { mSession.user.push_back({mSession.endMs, mLine, std::move(action)}); }

  Session mSession;
  std::size_t mLine = 0;
  bool mIsEnded = false;
  std::array<std::int16_t, 6> mCap{};
};

// The order is that of the message that lists all verbs: device first, then the user.
const std::vector<SessionParser::Verb>& SessionParser::verbs() {
  static const std::vector<Verb> kVerbs = {
      {"rotmode", &SessionParser::parseAdvancedSettings, "CODE zoom on|off"},
      {"motion", &SessionParser::parseMotion, "X Y Z RX RY RZ"},
      {"key", &SessionParser::parseKey, "front|right|top|back|left|bottom|fit"},
      {"function", &SessionParser::parseFunction, "N"},
      {"event", &SessionParser::parseEvent, "CODE"},
      {"device", &SessionParser::parseDevice, "down|up"},
      {"select", &SessionParser::parseSelect, "all|none|HANDLE..."},
      {"command", &SessionParser::parseCommand, "TEXT"},
      {"enter", &SessionParser::parseEnter, ""},
      {"setvar", &SessionParser::parseSetVariable, "NAME VALUE"},
      {"projection", &SessionParser::parseProjection, "parallel|perspective"},
      {"pointer", &SessionParser::parsePointer, "canvas|tree|list|edit|qt|none"},
      {"document", &SessionParser::parseDocument, "open NAME|close|NAME"},
      {"viewport", &SessionParser::parseViewport, "N"},
      {"setting", &SessionParser::parseSetting, "NAME VALUE"},
      {"reload", &SessionParser::parseReload, ""},
      {"menu", &SessionParser::parseMenu, ""},
      {"end", &SessionParser::parseEnd, ""}};
  return kVerbs;
}

}  // namespace

std::vector<SessionVerb> sessionVerbs() {
  std::vector<SessionVerb> verbs;
  for (const SessionParser::Verb& verb : SessionParser::verbs()) verbs.push_back({verb.name, verb.arguments});
  return verbs;
}

Session parseSession(std::string_view text, const std::string& file) {
  SessionParser parser(file);
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t length = text.find('\n');
    parser.parseLine(number, text.substr(0, length));
    text.remove_prefix(length == std::string_view::npos ? text.size() : length + 1);
  }
  return parser.take();
}

Session readSession(const std::filesystem::path& file) {
  Session session = parseSession(readFile(file, "a session"), file.string());
  session.folder = std::filesystem::absolute(file).parent_path();
  return session;
}

}  // namespace workbench
