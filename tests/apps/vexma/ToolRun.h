#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What a run of the program `vexma` left.
struct ToolResult {
    int status;
    std::string out;
    std::string error;
};

/// A folder of its own for the files of one test, with a small model and a
/// catalogue: ann (clerk) may use the view v1 of its path /content/small, which
/// leaves out the query item "Secret"; bob may use none.
class ToolFolder {
public:
    ToolFolder();
    ToolFolder(ToolFolder const&) = delete;
    ToolFolder& operator=(ToolFolder const&) = delete;
    ~ToolFolder();

    /// Makes the folders of the name too.
    void Write(std::string const& name, std::string const& text) const;

    /// Runs the program in this folder.
    ToolResult Run(std::vector<std::string> const& arguments, std::string const& input = "") const;
    /// Runs a command of the shell in this folder; "$VEXMA" names the program, which keeps its
    /// cache in "caches".
    ToolResult RunShell(std::string const& command) const;

    /// The options that open the catalogue's model for a user.
    static std::vector<std::string> As(std::string const& command, std::string const& user,
                                       std::vector<std::string> const& more = {});

private:
    std::string Read(std::string const& name) const;

    std::filesystem::path m_path;
};
