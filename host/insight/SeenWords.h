#pragma once

#include "Vex_Handle_Collection.h"
#include "host/store/image/Model.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vex {

/// The class and property names of the objects that somebody may see. Names that only
/// other objects have are told nowhere: they count as if they did not exist.
class SeenWords {
public:
    /// Which of some objects may be seen: a verdict for each in its place; those past
    /// the last verdict may not.
    using MaySee = std::function<std::vector<bool>(Vex_Handle_Collection const&)>;

    /// The objects that were answered: those may be seen whatever is said about them.
    /// Asked for once, and only in doubt.
    using Answered = std::function<std::vector<VEX_HANDLE>()>;

    SeenWords(Model const& model, MaySee maySee, Answered answered);

    bool isClass(I18NString const& word);
    bool isProperty(I18NString const& word);

    /// @{
    /// The word, of these and of `others`, that was probably meant; "" when none is near.
    /// The first time, every object is looked at.
    std::string nearestClass(I18NString const& word, std::vector<I18NString> const& others);
    std::string nearestProperty(I18NString const& word, std::vector<I18NString> const& others);
    /// @}

private:
    struct Words {
        std::set<I18NString> classes;
        std::set<I18NString> properties;
    };

    template <class Has> bool isOnSeenObject(Has const& has);
    bool mayScan();
    std::vector<VEX_HANDLE> const& answered();
    std::vector<VEX_HANDLE> seenOf(Vex_Handle_Collection const& objects) const;
    Words const& all();

    Model const& m_model;
    MaySee m_maySee;
    Answered m_askForAnswered;
    std::optional<std::vector<VEX_HANDLE>> m_answered;
    std::optional<Words> m_all;
    std::size_t m_scans = 0; // of the model, each for one word
};

} // namespace vex
