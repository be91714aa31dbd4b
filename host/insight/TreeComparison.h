#pragma once

#include "host/insight/AnsweredTree.h"

#include <cstdint>
#include <vector>

namespace vex {

/// How somebody sees an object.
enum class Presence : std::uint8_t {
    None,
    BehindShortcuts, // only as a member of what shortcuts stand for
    InItsPlace,
};

/// How trees show each object of a model.
class Presences {
public:
    Presences(Model const& model, AnsweredTree const& trees);

    /// None for the null handle, too.
    Presence of(VEX_HANDLE object) const;

private:
    Model const* m_model;
    std::vector<Presence> m_presences; // by the number of the object
};

/// What the trees of a model show in a language.
struct LanguagePresences {
    I18NLocale locale;
    Presences presences;
};

/// What somebody sees of a model.
struct ComparedSide {
    Model const& model;
    I18NLocale const& locale;
    AnsweredTree const& trees;
    std::vector<LanguagePresences> others = {}; // further languages, the same ones on both sides
};

struct PropertyChange {
    /// "ID", "class", "container" and "shown" stand for what is no property; one in a further
    /// language has that behind it: "name (de)".
    I18NString property;
    I18NString before;
    I18NString after;
};

/// An object of one side or both, and what becomes of it from the first side to
/// the second.
struct ComparedObject {
    enum class Change {
        None,       // listed for what is inside it
        Appears,    // its presence rises
        Disappears, // its presence falls
        Changes,    // the same presence, with other properties
    };
    static constexpr std::size_t NoContainer = static_cast<std::size_t>(-1);

    VEX_HANDLE before; // null when the side's model lacks it
    VEX_HANDLE after;
    Change change = Change::None;
    Presence presenceBefore = Presence::None;
    Presence presenceAfter = Presence::None;
    std::vector<PropertyChange> properties; // of one that changes
    std::size_t container = NoContainer;    // its place in the list

    bool isRenamed() const;
};

/// The differences between what two sides show, as a tree: the objects that
/// differ and all that they stand in, each behind its container. Objects of two
/// models are the same when their ids are; of those left over, when their
/// references are.
std::vector<ComparedObject> compareTrees(ComparedSide const& before, ComparedSide const& after);

} // namespace vex
