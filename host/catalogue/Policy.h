#pragma once

#include "I18NLocale.h"
#include "host/catalogue/Selector.h"
#include "host/import/xml/FileText.h"
#include "host/import/yaml/YamlEvents.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// One selector of a view, and what it does there.
struct PolicyRule {
    enum class Kind : std::uint8_t {
        Include, // into the included set
        Except,  // keeps out of it
        Exclude, // into the excluded set
        Hide,    // into the hidden set
    };

    Kind kind = Kind::Include;
    Selector selector;
    std::string text; // as it is written; of a long one not all
    YamlPlace place;
};

/// A text and where it stands.
struct PolicyWord {
    I18NString text;
    YamlPlace place;
};

/// A security view by rules. Their order does not matter.
struct PolicyView {
    I18NString id;
    YamlPlace place;
    std::vector<std::pair<I18NLocale, I18NString>> names; // the nameless locale: for all
    std::vector<PolicyRule> rules;
    bool spreads = false; // what names an excepted object is excepted too
    bool isRoleBased = false;
    std::vector<PolicyWord> members; // roles
};

/// Who may use which view.
struct PolicyGrant {
    PolicyWord role;
    I18NString view;
};

struct PolicyUser {
    PolicyWord name;
    std::vector<I18NString> roles;
};

/// What somebody is to see, and not to see.
struct PolicyExpectation {
    I18NString user; // one of the two
    I18NString role;
    YamlPlace place;
    std::vector<PolicyRule> sees;
    std::vector<PolicyRule> seesNot;
    std::vector<std::pair<PolicyWord, std::size_t>> counts; // by class
};

/// Views by rules, and who may use them.
struct Policy {
    std::string file; // for messages
    std::vector<PolicyView> views;
    std::vector<PolicyGrant> grants;
    std::vector<PolicyUser> users;
    std::vector<PolicyExpectation> expectations;
    std::uint64_t fingerprint = 0; // of its text: another one after a change

    PolicyView const* findView(I18NString const& id) const;
};

/// What a policy may hold.
struct PolicyLimits {
    static constexpr std::size_t bytes = 16U << 20U;
    static constexpr std::size_t views = 1'000;
    static constexpr std::size_t selectors = 100'000;
    static constexpr std::size_t wideSelectors = 10'000; // that mean more than one place
    static constexpr std::size_t grants = 100'000;
    static constexpr std::size_t grantsOfAll = 1'000'000; // by the policies of a catalogue
    static constexpr std::size_t users = 100'000;
    static constexpr std::size_t entries = 40'000'000; // what rules mean, and the sets
    static constexpr std::size_t steps = 500'000'000;  // that find out what rules mean
};

/// Reads YAML; `name` stands for the file. Raises `KRLDocumentException` with the
/// place of the first error.
std::shared_ptr<Policy const> readPolicyText(std::string_view text, std::string const& name);
/// The same of a file.
std::shared_ptr<Policy const> readPolicy(std::string const& file,
                                         InputLimit const& limit = PolicyLimits::bytes);

} // namespace vex
