#pragma once

#include "apps/vexma/DescriptorBuffer.h"
#include "apps/vexma/ShownText.h"

#include <functional>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

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

/// Where the program's results and complaints go. From its construction on,
/// standard output belongs to the results alone: what anything else in the
/// process prints there goes to standard error.
class Console {
public:
    Console();

    /// Takes results. A terminal shows what could steer it as the spelling says, which is
    /// that of the form that the results have.
    std::ostream& out(Spelling spelling = Spelling::Drawn) {
        m_buffer.setSpelling(spelling);
        return m_out;
    }
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
    /// "vexma: text" on standard error, in one line: names in it cannot begin another.
    /// Takes no memory.
    void complain(std::string_view text);

    /// Complains, and has the program fail at its end whatever its results are.
    void fail(std::string_view text) {
        m_hasFailed = true;
        complain(text);
    }

    /// Takes back what was written since the results were flushed: they do not come to
    /// their end. Takes no memory.
    void takeBack() { m_buffer.takeBack(); }

    /// Has something done once the results are out, before the program ends; it raises
    /// nothing but `std::bad_alloc`.
    void afterResults(std::function<void()> work) { m_afterResults.push_back(std::move(work)); }

    /// Writes what is buffered, and does what is to be done after. When results were lost, takes
    /// back what can be and complains, unless their reader stopped reading, which it may. Gives the
    /// status to end with.
    int finish(int status);

private:
    int finishResults(int status);

    DescriptorBuffer m_buffer;
    std::ostream m_out;
    bool m_outIsTerminal;
    bool m_errorIsTerminal;
    bool m_isVerbose = false;
    bool m_hasFailed = false;
    std::vector<std::function<void()>> m_afterResults;
};

} // namespace vex
