#pragma once

#include "I18NHash.h"
#include "host/store/image/Model.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vex {

/// What names in a text lead to.
struct ResolvedNames {
    /// Several, when one name may stand for any of them; in document order. Valid as long
    /// as what resolved them.
    std::span<VEX_HANDLE const> candidates;
    std::size_t used = 0; // how many of the names lead there, from the first
};

/// Finds what names in the texts of a model stand for. Not for threads.
class NameResolution {
public:
    using Names = std::span<std::u16string_view const>;

    /// The model stays where it is.
    explicit NameResolution(Model const& model) : m_model(model) {}

    /// What names lead to by themselves: a reference, with or without the folders on the way,
    /// through shortcuts too; the most that lead somewhere.
    ResolvedNames resolve(Names names);

    /// The same in a text of `reader`, where names may also be relative: to each element that
    /// the reader stands in, innermost first, and one name alone to anything in a namespace
    /// around it. What all names lead to comes before what some lead to.
    ResolvedNames resolveFor(VEX_HANDLE reader, Names names);

    /// True for the name of something that stands in no namespace, such as a data source:
    /// names behind it are those of a database.
    bool isOutsideName(std::u16string_view name);

    /// The first object with the reference of an element, which may be the element itself;
    /// null when it has none.
    VEX_HANDLE firstLike(VEX_HANDLE element);

    /// The same for each element of another model, in its order: the first object here with
    /// its reference.
    std::vector<VEX_HANDLE> firstsLike(Model const& other);

private:
    /// A reference, whatever objects have it: a place in `m_firsts`.
    using Reference = std::uint32_t;
    static constexpr Reference Nowhere = 0;

    /// A name below a reference. The texts are the model's own.
    struct Below {
        Reference before;
        std::u16string_view name;
        auto operator<=>(Below const&) const = default;
    };

    /// What is known about an element.
    struct Place {
        Reference own = Nowhere; // its reference; none outside of namespaces
        VEX_HANDLE scope;        // the nearest around it that names may be relative to
        VEX_HANDLE space;        // the nearest namespace around it
    };

    /// A named object of a namespace.
    struct Named {
        std::uint32_t space;
        std::u16string_view name;
        VEX_HANDLE object;
    };

    void buildIndex();
    void sortNamed(std::vector<Named> named);
    Place placeBelow(VEX_HANDLE container) const;
    std::span<VEX_HANDLE const> findNamed(VEX_HANDLE space, std::u16string_view name) const;
    bool isFolder(VEX_HANDLE object) const;
    Reference continued(Reference before, std::u16string_view name) const;
    std::optional<Reference> targetOf(VEX_HANDLE shortcut);
    ResolvedNames follow(Reference scope, Names names);
    bool standsIn(VEX_HANDLE object, VEX_HANDLE container) const;
    Place const& placeOf(VEX_HANDLE element) const;

    Model const& m_model;
    std::vector<Place> m_places; // by element; empty until the index is made
    std::map<Below, Reference> m_references;
    std::vector<VEX_HANDLE> m_firsts; // the first object with each reference
    std::vector<std::pair<std::uint32_t, std::u16string_view>> m_namedBy; // the namespace and name
    std::vector<VEX_HANDLE> m_named;                                      // of each of these
    std::set<std::u16string_view> m_outside;
    std::unordered_map<VEX_HANDLE, std::optional<Reference>> m_targets; // of those followed
};

/// The text of names from the first: [Sales].[Orders].
I18NString referenceOf(NameResolution::Names names);

} // namespace vex
