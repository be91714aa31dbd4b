#pragma once

#include "I18NString.h"
#include "KRLIDOM_OwnedDocument.h"

#include <map>
#include <vector>

namespace vex {

/// What a metadata request asks for, as data. Empty texts and lists stand for
/// what is not asked for.
struct MetadataRequest {
    /// Binds a property of the start object to one value.
    struct Constraint {
        I18NString property; // "CLASS/@NAME"
        I18NString value;
        bool operator==(Constraint const&) const = default;
    };

    I18NString start{};     // path of the object to start at; "": the first namespace
    I18NString reference{}; // of the object to start at, in place of a path
    long depth = 0;         // levels to show; 0: all
    I18NString view{};      // the one of the user's views to answer with; "": all of them
    bool functions = false; // asks for the package of the model, not for the model
    std::vector<I18NString> globals{};     // names of settings of the model and locale
    std::vector<I18NString> properties{};  // "CLASS/@NAME", "*" and "." being classes too
    std::vector<I18NString> collections{}; // "CLASS/NAME"
    std::vector<Constraint> constraints{};
    std::map<I18NString, I18NString> otherOptions{}; // by name
    std::vector<I18NString> oddConstraints{}; // texts that are not of the form PROPERTY=[VALUE]

    bool operator==(MetadataRequest const&) const = default;

    /// @{
    /// Adds one as people write it: what names no class is asked of every class,
    /// and a constraint of the start object.
    void addProperty(I18NString const& text);
    void addCollection(I18NString const& text);
    void addConstraint(I18NString const& property, I18NString value);
    /// @}

    /// The text that says where to start, as plug-ins take it: the reference, else the
    /// option "start_atPath", else the start path.
    I18NString const& startText() const;
    /// Takes the place of that text: a reference's when there is one, else a path's.
    void setStartText(I18NString const& text);

    /// The "Metadata" document that asks for this.
    KRLIDOM_OwnedDocument toDocument() const;

    /// What a document asks for, as plug-ins read it: wherever in it the elements
    /// stand, and the first of two values for one option. What says nothing to a
    /// plug-in is left out; a null document asks for nothing.
    static MetadataRequest read(KRLIDOM_Document const& document);
};

} // namespace vex
