// Names, files and options that would steer a terminal, or pass for something else, in
// every command.

#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

/// Directions, isolates, no width, separators, controls, delete, a mark, a tag, a line break.
std::string hostileText(std::string const& lineBreak) {
    return "A\u202Eb\u2066c\u200Bd\u2028e\u0085f\u009B31mg\x7Fh\uFEFFi\U000E0041j" + lineBreak +
           "forged";
}
/// The same where bytes may be anything.
std::string hostileBytes() {
    return "h\033[2J\xFF" + hostileText("\n");
}

std::string const file = hostileBytes() + ".xml";

void writeHostileFiles(ToolFolder const& folder) {
    std::string const name = hostileText("&#10;");
    folder.Write(file, "<model defaultLocale='en'><namespace id='n' name='" + name +
                           "'><querySubject id='" + name + "' name='" + name + "' screenTip='" +
                           name + "' expression='[" + name + "].[no such]'>" +
                           "<queryItem id='i' name='" + name + "'/></querySubject>" +
                           "</namespace><securityViews><securityView id='v'>" +
                           "<set kind='included'><item>n</item><item>" + name +
                           "</item></set></securityView></securityViews></model>");
    folder.Write("c.xml", "<catalog><model path='/content/" + name + "' file='" +
                              hostileText("&#10;") + ".xml'><grant role='" + name +
                              "' view='v'/></model><user name='" + name + "'><role>" + name +
                              "</role></user><user name='other'/></catalog>");
    folder.Write(hostileText("\n") + ".xml", "<model><a/></model>");
    folder.Write("names.catalog.xml",
                 "<catalog><model path='/content/m' file='small.model.xml'><grant role='" + name +
                     "' view='v1'/></model><user name='" + name + "'><role>" + name +
                     "</role></user><user name='" + name + "'/></catalog>");
    folder.Write("user.catalog.xml",
                 "<catalog><model path='/content/m' file='small.model.xml'><grant role='" + name +
                     "' view='v1'/></model><user name='" + name + "'><role>" + name +
                     "</role></user><user name='other'/></catalog>");
    folder.Write("broken.xml", "<model><namespace name='" + name + "'><shortcut id='s' name='" +
                                   name + "' refobj='[" + name +
                                   "].[nothing]'/></namespace></model>");
    folder.Write("lines", "{\"action\": 32000, \"in\": [{\"handle\": \"" + hostileText("\\n") +
                              "\"}, {\"string\": \"" + hostileText("\\n") + "\"}]}\n" +
                              hostileText(" ") + "\n");
}

struct Command {
    std::vector<std::string> arguments;
    bool isForPrograms = false; // XML or JSON: a pipe gets what is there
};

std::vector<Command> commands() {
    std::string const text = hostileText("\n");
    std::string const path = '[' + text + ']';
    std::string const bytes = hostileBytes();
    std::string const all = "user.catalog.xml";
    return {
        {{"metadata", file, "--property", "*", "--depth", "3"}, true},
        {{"metadata", file, "--property", bytes}, true},
        {{"metadata", file, "--start", path + ".[x]"}},
        {{"metadata", file, "--ref", path + ".[x]"}},
        {{"metadata", file, "--id", bytes}},
        {{"metadata", file, "--locale", bytes}, true},
        {{"metadata", file, "--request", bytes}},
        {{"metadata", bytes}},
        {{"metadata", file, "--plugin", bytes}},
        {{"metadata", file, "--depth", bytes}},
        {{"metadata", file, "--" + bytes}},
        {{bytes}},
        {{"--" + bytes}},
        {{"tree", file, "--property", "*"}},
        {{"tree", file, "--why"}},
        {{"tree", file, "--start", path, "--collection", bytes}},
        {{"tree", file, "--trace"}},
        {{"access", file, "n", text, path}},
        {{"access", file, bytes}},
        {{"access", "--catalog", all, "--model", "/content/m", "--all-users", "q1"}},
        {{"explain", file, text}},
        {{"explain", file, text, "--json"}, true},
        {{"explain", file, bytes}},
        {{"who", "--catalog", all, "--model", "/content/m", "q1"}},
        {{"who", "--catalog", all, "--model", "/content/m", "q1", "--json"}, true},
        {{"matrix", "--catalog", all, "--model", "/content/m"}},
        {{"verify", file}},
        {{"verify", "--catalog", all, "--model", "/content/m"}},
        {{"verify", "--catalog", all, "--model", "/content/m", "--format", "json"}, true},
        {{"verify", "--catalog", all, "--model", "/content/m", "--format", "sarif"}, true},
        {{"verify", "--catalog", all, "--model", "/content/m", "--format", "junit"}, true},
        {{"verify", "--catalog", all, "--model", "/content/m", "--user", bytes}},
        {{"diff", file, "small.model.xml"}},
        {{"diff", file, "small.model.xml", "--json"}, true},
        {{"diff", "--catalog", all, "--model", "/content/m", "--user", text, "--other-user",
          "other"}},
        {{"session", file}, true},
        {{"validate", file}},
        {{"validate", "broken.xml"}},
        {{"tree", "broken.xml"}},
        {{"validate", file, "--format", "json"}, true},
        {{"validate", file, "--format", "sarif"}, true},
        {{"validate", "c.xml", "names.catalog.xml", bytes}},
        {{"validate", file, "--rules", bytes}},
        {{"tree", "--catalog", "c.xml", "--model", "/content/" + text, "--user", bytes}},
        {{"tree", "--catalog", "c.xml", "--model", bytes, "--user", "other"}},
        {{"man", bytes}},
        {{"man", "--into", bytes + "/none"}},
        {{"completion", bytes}},
    };
}

/// What of the output steers a terminal or passes for a line of its own; "" for nothing.
std::string steering(std::string output) {
    for (std::string const harmless : {"\r\033[K", "^D\b\b", "\r\n"}) { // progress, the terminal
        for (auto at = output.find(harmless); at != output.npos; at = output.find(harmless, at)) {
            output.replace(at, harmless.size(), harmless == "\r\n" ? "\n" : "");
        }
    }
    for (std::string const harmful :
         {"\u202E", "\u2066", "\u200B", "\u2028", "\u0085", "\u009B", "\x7F", "\uFEFF",
          "\U000E0041", "\xFF", "\033[2J", "\r", "\nforged"}) {
        if (output.find(harmful) != output.npos) {
            return testing::PrintToString(harmful) + " in " + testing::PrintToString(output);
        }
    }
    return "";
}

std::string quoted(std::string const& argument) {
    std::string text = "'";
    for (char const character : argument) {
        text += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return text + '\'';
}

void writeCommand(ToolFolder const& folder, Command const& command) {
    std::string line = "\"$VEXMA\"";
    for (std::string const& argument : command.arguments) {
        line += ' ' + quoted(argument);
    }
    folder.Write("command", line + " < lines\n");
}

TEST(HostileNames, AreSpelledOutInMessagesAndDrawingsOfEveryCommand) {
    ToolFolder const folder;
    writeHostileFiles(folder);
    for (Command const& command : commands()) {
        writeCommand(folder, command);
        ToolResult const result = folder.RunShell("export VEXMA; sh ./command");
        EXPECT_EQ(steering(result.error), "") << testing::PrintToString(command.arguments);
        EXPECT_FALSE(result.out.empty() && result.error.empty());
        if (!command.isForPrograms) {
            EXPECT_EQ(steering(result.out), "") << testing::PrintToString(command.arguments);
        }
    }
}

TEST(HostileNames, AreSpelledOutInEverythingOnATerminal) {
    ToolFolder const folder;
    writeHostileFiles(folder);
    for (Command const& command : commands()) {
        writeCommand(folder, command);
        ToolResult const result = folder.RunShell(
            "export VEXMA TERM=xterm; unset NO_COLOR; script -qc 'sh ./command' /dev/null");
        EXPECT_FALSE(result.out.empty());
        EXPECT_EQ(steering(result.out), "") << testing::PrintToString(command.arguments);
    }
}

TEST(HostileNames, StayWhatTheyAreInDocumentsForPrograms) {
    ToolFolder const folder;
    writeHostileFiles(folder);
    std::string const kept =
        "A\u202Eb\u2066c\u200Bd\u2028e\u0085f\u009B31mg\x7Fh\uFEFFi\U000E0041j";
    for (Command const& command : {Command{{"metadata", file, "--property", "*", "--depth", "3"}},
                                   Command{{"explain", file, hostileText("\n"), "--json"}},
                                   Command{{"diff", file, "small.model.xml", "--json"}},
                                   Command{{"validate", file, "--format", "json"}}}) {
        writeCommand(folder, command);
        EXPECT_THAT(folder.RunShell("export VEXMA; sh ./command").out, HasSubstr(kept))
            << command.arguments.front();
        ToolResult const shown =
            folder.RunShell("export VEXMA TERM=xterm; script -qc 'sh ./command' /dev/null");
        EXPECT_THAT(shown.out, HasSubstr(command.arguments.front() == "metadata"
                                             ? "A&#x202E;b&#x2066;c&#x200B;"
                                             : "A\\u202eb\\u2066c\\u200b"))
            << command.arguments.front();
    }
}

} // namespace
