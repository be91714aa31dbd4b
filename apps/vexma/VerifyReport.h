#pragma once

#include "host/insight/TreeCheck.h"

#include <ostream>
#include <string>
#include <vector>

namespace vex {

/// What verifying found, user by user.
class VerifyReport {
public:
    /// Both stay where they are.
    VerifyReport(Model const& model, I18NLocale const& locale) : m_model(model), m_locale(locale) {}

    void Add(std::string const& user, TreeCheck check);
    /// A user whose requests are refused. When only one of trees and check is,
    /// they differ.
    void addRefusal(std::string const& user, bool both, std::string const& text);

    /// False when something leaks or differs without reason.
    bool isClean() const;

    void writeText(std::ostream& out) const;
    void writeJson(std::ostream& out) const;

private:
    struct Entry {
        std::string user;
        TreeCheck check;
        std::string refusal; // "" when there is an answer
        bool isRefusedByBoth = false;
    };

    void writeEntry(std::ostream& out, Entry const& entry) const;

    Model const& m_model;
    I18NLocale const& m_locale;
    std::vector<Entry> m_entries;
};

} // namespace vex
