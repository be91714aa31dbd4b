#include "tests/apps/vexma/ToolRun.h"

#include "tests/support/ShellText.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <sys/wait.h>

namespace {

constexpr char const* smallModel = R"(<model defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n1">
    <property name="name" locale="en">Sales</property>
    <property name="name" locale="de">Vertrieb</property>
    <querySubject id="q1" name="Orders" screenTip="One row per order">
      <queryItem id="i1" name="Quantity"/>
      <queryItem id="i2" name="Secret"/>
    </querySubject>
  </namespace>
  <securityViews>
    <securityView id="v1">
      <set kind="included"><item>n1</item><item>q1</item><item>i1</item></set>
    </securityView>
  </securityViews>
</model>
)";

constexpr char const* smallCatalogue = R"(<catalog>
  <model path="/content/small" file="small.model.xml">
    <package value="Small"><property name="screenTip" locale="de">Klein</property></package>
    <grant role="clerk" view="v1"/>
  </model>
  <user name="ann"><role>clerk</role></user>
  <user name="bob"/>
</catalog>
)";

} // namespace

ToolFolder::ToolFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "vexma-XXXXXX").string();
    m_path = ::mkdtemp(path.data());
    Write("small.model.xml", smallModel);
    Write("small.catalog.xml", smallCatalogue);
}

ToolFolder::~ToolFolder() {
    std::filesystem::remove_all(m_path);
}

void ToolFolder::Write(std::string const& name, std::string const& text) const {
    std::filesystem::create_directories((m_path / name).parent_path());
    std::ofstream(m_path / name, std::ios::binary) << text;
}

ToolResult ToolFolder::Run(std::vector<std::string> const& arguments,
                           std::string const& input) const {
    Write("input", input);
    std::string command = "\"$VEXMA\"";
    for (std::string const& argument : arguments) {
        command += ' ' + quotedForShell(argument);
    }
    return RunShell(command + " < input");
}

ToolResult ToolFolder::RunShell(std::string const& command) const {
    std::string const line =
        "cd " + quotedForShell(m_path.string()) + " && VEXMA=" + quotedForShell(VEXMA_PROGRAM) +
        " && export XDG_CACHE_HOME=\"$PWD/caches\" && { " + command + "; } > out 2> error";
    int const status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read("out"), Read("error")};
}

std::vector<std::string> ToolFolder::As(std::string const& command, std::string const& user,
                                        std::vector<std::string> const& more) {
    std::vector<std::string> arguments{
        command, "--catalog", "small.catalog.xml", "--model", "/content/small", "--user", user};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

std::string ToolFolder::Read(std::string const& name) const {
    std::ifstream file(m_path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
