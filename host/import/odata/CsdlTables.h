#pragma once

#include <span>
#include <string_view>

namespace vex {

inline constexpr std::string_view csdlSpace = "http://docs.oasis-open.org/odata/ns/edm";
inline constexpr std::string_view edmxSpace = "http://docs.oasis-open.org/odata/ns/edmx";

/// An attribute that nothing has to be worked out of: it becomes a property, or it is left out
/// and why.
struct CsdlAttribute {
    std::string_view element; // "" for every one
    std::string_view attribute;
    char const* property;
    char const* reason = nullptr;
};
std::span<CsdlAttribute const> csdlAttributes();

/// An element that nothing of a model stands for.
struct CsdlOmission {
    std::string_view element;
    char const* reason;
};
std::span<CsdlOmission const> csdlOmissions();

/// A term of annotations, or a part of its record, that a property stands for.
struct CsdlTerm {
    std::string_view vocabulary;
    std::string_view term;
    std::string_view part; // of a record; "" for the value itself
    char const* property;
    /// What is meant when the annotation has no value; null where it must have one.
    char const* withoutValue = nullptr;
    /// What the property is when it is true, in the place of "true".
    char const* whenTrue = nullptr;
};
std::span<CsdlTerm const> csdlTerms();

namespace csdlReasons {
inline constexpr char const* Unknown = "this import does not know it";
inline constexpr char const* OtherSpace = "it is of another XML namespace";
inline constexpr char const* OtherDocument =
    "it is another document; nothing but the source is read";
inline constexpr char const* OtherType = "its type stands in another document, which is not read";
inline constexpr char const* OtherTarget = "what it describes stands in another document";
inline constexpr char const* Qualifier = "it holds for one qualifier only";
inline constexpr char const* SaidAlready = "the same is said of it before";
inline constexpr char const* NoTarget = "no object stands for its target";
inline constexpr char const* NoValue = "its value is none, a list, or one to be computed";
inline constexpr char const* UnknownTerm = "no property stands for the term";
inline constexpr char const* OfOmitted = "what it describes was left out";
inline constexpr char const* Operation =
    "what a service can be asked to do is no object of a model";
} // namespace csdlReasons

} // namespace vex
