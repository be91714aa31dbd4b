#include "KRLException.h"
#include "host/catalogue/Policy.h"
#include "host/import/xml/FileText.h"
#include "host/store/build/WritableText.h"
#include "host/store/image/ShortText.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <set>

namespace vex {

namespace {

using Kind = YamlEvent::Kind;

class PolicyReader {
public:
    PolicyReader(std::string_view text, Policy& policy)
        : m_policy(policy), m_events(text, policy.file, {.content = "all rules"}) {}

    void read() {
        Key<PolicyReader> const keys[] = {
            {"views", &PolicyReader::readViews},
            {"roles", &PolicyReader::readRoles},
            {"users", &PolicyReader::readUsers},
            {"expect", &PolicyReader::readExpectations},
        };
        next();
        if (!isNothing()) {
            readKeys("a policy", keys, *this);
        }
        next(); // a second document is refused
    }

private:
    /// What stands behind a key, by the key.
    template <class Target> struct Key {
        std::string_view name;
        void (PolicyReader::*read)(Target&);
    };

    YamlEvent const& event() const { return m_events.current(); }
    YamlEvent const& next() {
        if (m_events.next().hasTag) {
            refuse("a tag stands here, such as !!str; leave it out, for every value is what its "
                   "key says");
        }
        return event();
    }
    bool isNothing() const { return event().kind == Kind::End || event().isNothing(); }
    [[noreturn]] void refuse(std::string const& problem) const {
        m_events.refuse(event().place, problem);
    }

    /// A mapping, from its begin to its end: `take` with each key, its value being the current
    /// event. No key stands there twice.
    template <class Take> void readMapping(std::string const& what, Take const& take) {
        if (isNothing()) {
            return;
        }
        if (event().kind != Kind::MappingStart) {
            refuse(what);
        }
        std::set<std::string> seen;
        while (next().kind != Kind::MappingEnd) {
            PolicyWord const key = word("a key is a text");
            if (!seen.insert(key.text.toUtf8()).second) {
                refuse(quotedShort(key.text) +
                       " stands here for the second time; put both into one");
            }
            next();
            take(key);
        }
    }

    template <class Target, std::size_t Count>
    void readKeys(std::string const& where, Key<Target> const (&keys)[Count], Target& target) {
        std::string known;
        for (Key<Target> const& each : keys) {
            known += (known.empty() ? "" : ", ") + std::string(each.name);
        }
        readMapping(where + " holds: " + known, [&](PolicyWord const& word) {
            auto const key = std::find_if(std::begin(keys), std::end(keys), [&](auto const& each) {
                return word.text.toUtf8() == each.name;
            });
            if (key == std::end(keys)) {
                m_events.refuse(word.place, where + " has no " + quotedShort(word.text) +
                                                "; it holds: " + known);
            }
            (this->*key->read)(target);
        });
    }

    PolicyWord word(std::string const& wanted) const {
        if (event().kind != Kind::Scalar || event().text.empty()) {
            refuse(event().kind == Kind::Alias
                       ? "an alias stands here; write out what it stands for, and put a text that "
                         "begins with \"*\" in quotes"
                       : wanted);
        }
        PolicyWord const made{I18NString::fromUtf8(event().text), event().place};
        if (findUnwritable(made.text.view()) != std::u16string_view::npos) {
            refuse("this text holds a character that no model can; remove it");
        }
        return made;
    }

    /// One text, or a list of them: `take` with each.
    template <class Take> void readList(std::string const& wanted, Take const& take) {
        if (isNothing()) {
            return;
        }
        if (event().kind != Kind::SequenceStart) {
            take(word(wanted));
            return;
        }
        while (next().kind != Kind::SequenceEnd) {
            take(word(wanted));
        }
    }

    void admit(std::size_t count, std::size_t limit, char const* what) const {
        if (count > limit) {
            refuse("a policy has at most " + std::to_string(limit) + ' ' + what);
        }
    }

    void readViews(PolicyReader&) {
        Key<PolicyView> const keys[] = {
            {"name", &PolicyReader::readNames},
            {"include", &PolicyReader::readRules<PolicyRule::Kind::Include>},
            {"except", &PolicyReader::readRules<PolicyRule::Kind::Except>},
            {"exclude", &PolicyReader::readRules<PolicyRule::Kind::Exclude>},
            {"hide", &PolicyReader::readRules<PolicyRule::Kind::Hide>},
            {"spread", &PolicyReader::readSwitch<&PolicyView::spreads>},
            {"roleBased", &PolicyReader::readSwitch<&PolicyView::isRoleBased>},
            {"members", &PolicyReader::readMembers},
        };
        readMapping("views are a mapping of ids to rules", [&](PolicyWord const& id) {
            PolicyView view;
            view.id = id.text;
            view.place = id.place;
            readKeys("a view", keys, view);
            if (!view.members.empty() && !view.isRoleBased) {
                m_events.refuse(view.members.front().place,
                                "a view with members is role based; write \"roleBased: true\"");
            }
            m_policy.views.push_back(std::move(view));
            admit(m_policy.views.size(), PolicyLimits::views, "views");
        });
    }

    void readNames(PolicyView& view) {
        if (event().kind != Kind::MappingStart) {
            view.names.emplace_back(I18NLocale(), word("a name is a text").text);
            return;
        }
        readMapping("", [&](PolicyWord const& language) {
            if (!I18NLocale::isKnown(language.text)) {
                m_events.refuse(language.place, "the locale " + quotedShort(language.text) +
                                                    " is unknown; write one like de or de_AT");
            }
            I18NLocale const locale(language.text);
            if (std::any_of(view.names.begin(), view.names.end(),
                            [&](auto const& each) { return each.first == locale; })) {
                m_events.refuse(language.place, "this language stands here for the second time");
            }
            view.names.emplace_back(locale, word("a name is a text").text);
        });
    }

    PolicyRule rule(PolicyRule::Kind kind, PolicyWord const& word) {
        PolicyRule made{kind, {}, shortened(word.text.view()), word.place};
        std::string const complaint = Selector::read(word.text, made.selector);
        if (!complaint.empty()) {
            m_events.refuse(word.place, complaint);
        }
        admit(++m_selectors, PolicyLimits::selectors, "selectors");
        m_wideSelectors += made.selector.reach != Selector::Reach::Itself ? 1 : 0;
        admit(m_wideSelectors, PolicyLimits::wideSelectors, "selectors that mean many objects");
        return made;
    }

    void readSelectors(PolicyRule::Kind kind, std::vector<PolicyRule>& rules) {
        readList("a selector is a text; put it in quotes, such as \"[Sales]/**\"",
                 [&](PolicyWord const& word) { rules.push_back(rule(kind, word)); });
    }

    template <PolicyRule::Kind kind> void readRules(PolicyView& view) {
        readSelectors(kind, view.rules);
    }

    template <bool PolicyView::*flag> void readSwitch(PolicyView& view) {
        std::string const& text = event().text;
        if (event().kind != Kind::Scalar || (text != "true" && text != "false")) {
            refuse("write true or false here");
        }
        view.*flag = text == "true";
    }

    void readMembers(PolicyView& view) {
        readList("a member is the name of a role",
                 [&](PolicyWord const& role) { view.members.push_back(role); });
    }

    void readRoles(PolicyReader&) {
        readMapping("roles are a mapping of roles to the views that they may use",
                    [&](PolicyWord const& role) {
                        readList("a role has the ids of views", [&](PolicyWord const& view) {
                            m_policy.grants.push_back({{role.text, view.place}, view.text});
                            admit(m_policy.grants.size(), PolicyLimits::grants, "grants");
                        });
                    });
    }

    void readUsers(PolicyReader&) {
        readMapping("users are a mapping of users to their roles", [&](PolicyWord const& name) {
            PolicyUser user{name, {}};
            readList("a user has names of roles",
                     [&](PolicyWord const& role) { user.roles.push_back(role.text); });
            m_policy.users.push_back(std::move(user));
            admit(m_policy.users.size(), PolicyLimits::users, "users");
        });
    }

    void readExpectations(PolicyReader&) {
        Key<PolicyExpectation> const keys[] = {
            {"user", &PolicyReader::readWho<&PolicyExpectation::user>},
            {"role", &PolicyReader::readWho<&PolicyExpectation::role>},
            {"sees", &PolicyReader::readSees<&PolicyExpectation::sees>},
            {"not", &PolicyReader::readSees<&PolicyExpectation::seesNot>},
            {"counts", &PolicyReader::readCounts},
        };
        if (isNothing()) {
            return;
        }
        if (event().kind != Kind::SequenceStart) {
            refuse("expectations are a list, such as - {user: carl, not: [\"[Sales].[Margin]\"]}");
        }
        while (next().kind != Kind::SequenceEnd) {
            PolicyExpectation expectation;
            expectation.place = event().place;
            readKeys("an expectation", keys, expectation);
            if (expectation.user.empty() == expectation.role.empty()) {
                m_events.refuse(expectation.place, "an expectation is about a user or a role; "
                                                   "write one of the two");
            }
            if (expectation.sees.empty() && expectation.seesNot.empty() &&
                expectation.counts.empty()) {
                m_events.refuse(expectation.place,
                                "nothing is expected here; write sees, not or counts");
            }
            m_policy.expectations.push_back(std::move(expectation));
        }
    }

    template <I18NString PolicyExpectation::*who> void readWho(PolicyExpectation& expectation) {
        expectation.*who = word("the name of a user or role is a text").text;
    }

    template <std::vector<PolicyRule> PolicyExpectation::*list>
    void readSees(PolicyExpectation& expectation) {
        readSelectors(PolicyRule::Kind::Include, expectation.*list);
    }

    void readCounts(PolicyExpectation& expectation) {
        readMapping("counts are a mapping of classes to numbers", [&](PolicyWord const& cls) {
            PolicyWord const number = word("a count is a number");
            std::string const text = number.text.toUtf8();
            std::size_t count = 0;
            auto const end = text.data() + text.size();
            auto const read = std::from_chars(text.data(), end, count);
            if (read.ec != std::errc() || read.ptr != end) {
                refuse("a count is a number from 0, not " + quotedShort(number.text));
            }
            expectation.counts.emplace_back(cls, count);
            admit(++m_selectors, PolicyLimits::selectors, "selectors");
        });
    }

    Policy& m_policy;
    YamlEvents m_events;
    std::size_t m_selectors = 0;
    std::size_t m_wideSelectors = 0;
};

std::uint64_t fingerprintOf(std::string_view text) {
    constexpr std::uint64_t prime = 0x100'0000'01B3;
    std::uint64_t hash = 0xCBF2'9CE4'8422'2325;
    for (char const each : text) {
        hash = (hash ^ static_cast<unsigned char>(each)) * prime;
    }
    return hash;
}

} // namespace

PolicyView const* Policy::findView(I18NString const& id) const {
    auto const at = std::find_if(views.begin(), views.end(),
                                 [&](PolicyView const& view) { return view.id == id; });
    return at == views.end() ? nullptr : &*at;
}

std::shared_ptr<Policy const> readPolicyText(std::string_view text, std::string const& name) {
    auto const policy = std::make_shared<Policy>();
    policy->file = name;
    policy->fingerprint = fingerprintOf(text);
    PolicyReader(text, *policy).read();
    return policy;
}

std::shared_ptr<Policy const> readPolicy(std::string const& file, InputLimit const& limit) {
    return readPolicyText(readFileText(file, limit), file);
}

} // namespace vex
