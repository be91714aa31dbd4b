#pragma once

#include "I18NString.h"
#include "KRLIDOM_Document.h"

#include <map>
#include <set>
#include <vector>

namespace vex {

/// What a metadata request asks for, read as far as the size of its answer
/// needs it.
class RequestedParts {
public:
    explicit RequestedParts(KRLIDOM_Document const& request);

    /// Levels to show; 0 for all.
    long depth() const;
    /// The paths and references to start at; none when it starts at the root
    /// namespace.
    std::vector<I18NString> starts() const;
    bool isAboutPackage() const { return m_options.count("function") != 0; }
    /// The settings of model and locale that it asks for.
    std::size_t settingCount() const { return m_settings; }

    /// The properties that it names for a class; `all` when it names them all.
    struct Properties {
        std::set<I18NString> names;
        bool all = false;
    };
    Properties propertiesOf(I18NString const& cls) const;

    /// How often an answer goes through one collection of a class. The word for
    /// all collections counts unless `literally`.
    std::size_t timesThrough(I18NString const& cls, I18NString const& collection,
                             bool literally) const;

private:
    void Read(KRLIDOM_Node const& element);
    void take(I18NString const& tag, I18NString const& name, I18NString const& value);

    std::map<I18NString, I18NString> m_options;
    std::vector<I18NString> m_properties;
    std::vector<I18NString> m_collections;
    std::size_t m_settings = 0;
};

} // namespace vex
