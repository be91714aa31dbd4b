#pragma once

#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "Vex_Handle_Collection.h"

#include <cstddef>
#include <unordered_set>
#include <vector>

/// The child objects of one object by class, read once however many collections
/// are asked for. Used within one step of a request, for one object after
/// another: its memory is used again.
class VexMembers {
public:
    /// Reads the children of `object` in place of those before.
    void read(VEX_HANDLE object);

    /// Appends the children of that class, in child order. Many questions cost hardly more
    /// than reading the children, however often their classes change.
    void appendOfClass(I18NString const& className, Vex_Handle_Collection& found);

private:
    /// Children of one class that stand side by side, up to the next run.
    struct Run {
        I18NString const* className; // one of m_classes
        std::size_t first;
    };

    void appendRun(std::size_t run, Vex_Handle_Collection& found) const;
    void sortRuns();

    Vex_Handle_Collection m_children;
    std::unordered_set<I18NString> m_classes; // of all objects that were read
    std::vector<Run> m_runs;
    std::vector<std::size_t> m_byClass; // the runs, once many questions were asked
    std::size_t m_searches = 0;
};
