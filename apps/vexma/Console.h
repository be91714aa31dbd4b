#pragma once

#include <array>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace vex {

/// How the program ends.
enum ExitStatus : int {
    Done = 0,
    Different = 1,  // when asked for by --exit-code
    Refused = 1,    // the plug-in refused or raised, or a limit ended the call
    WrongUsage = 2, // of the command line
    Unreadable = 3, // a model, catalogue or request
    ShownPast = 4,  // trees show what the views leave out
    Unfinished = 5, // a check that a limit or an interrupt ended
    Unverified = 6, // a check that had nothing to look at
};

/// A buffered stream's way into a file descriptor, which it owns.
class DescriptorBuffer final : public std::streambuf {
public:
    explicit DescriptorBuffer(int descriptor);
    DescriptorBuffer(DescriptorBuffer const&) = delete;
    DescriptorBuffer& operator=(DescriptorBuffer const&) = delete;
    ~DescriptorBuffer() override;

    bool isTerminal() const;

    /// Why writing failed, an errno number; 0 when it did not.
    int getFailure() const { return m_failure; }

protected:
    int_type overflow(int_type character) override;
    int sync() override;

private:
    int m_descriptor;
    int m_failure = 0;
    std::array<char, 65'536> m_buffer;
};

/// Where the program's results and complaints go. From its construction on,
/// standard output belongs to the results alone: what anything else in the
/// process prints there goes to standard error.
class Console {
public:
    Console();

    /// Takes results.
    std::ostream& out() { return m_out; }
    bool outIsTerminal() const { return m_outIsTerminal; }
    /// Results may be coloured: a terminal, and the user has not said no.
    bool outHasColour() const;
    /// False when the reader of the results has gone, or writing failed.
    bool canWrite() const { return m_out.good(); }

    bool errorIsTerminal() const { return m_errorIsTerminal; }
    /// @{
    /// Whether complaints tell what only who builds plug-ins can use: the number of a
    /// failure, the function that raised it.
    bool isVerbose() const { return m_isVerbose; }
    void setVerbose(bool verbose) { m_isVerbose = verbose; }
    /// @}
    /// "vexma: text" on standard error.
    void complain(std::string_view text);

    /// Writes what is buffered. Complains when results were lost, unless their
    /// reader stopped reading, which it may. Gives the status to end with.
    int finish(int status);

private:
    DescriptorBuffer m_buffer;
    std::ostream m_out;
    bool m_outIsTerminal;
    bool m_errorIsTerminal;
    bool m_isVerbose = false;
};

/// `text` (UTF-8) without the control characters that could steer a terminal.
/// Line breaks and tabs stay when `keepLines` says so.
std::string printable(std::string_view text, bool keepLines);

} // namespace vex
