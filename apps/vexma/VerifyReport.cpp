#include "apps/vexma/VerifyReport.h"

#include "apps/vexma/Console.h"
#include "host/insight/ObjectText.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Json = nlohmann::ordered_json;

std::size_t countRequired(TreeCheck const& check) {
    return static_cast<std::size_t>(
        std::count_if(check.differences.begin(), check.differences.end(),
                      [](TreeDifference const& each) { return isRequired(each.cause); }));
}

std::string counted(std::size_t count, char const* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

} // namespace

void VerifyReport::Add(std::string const& user, TreeCheck check) {
    m_entries.push_back({user, std::move(check), "", false});
}

void VerifyReport::addRefusal(std::string const& user, bool both, std::string const& text) {
    m_entries.push_back({user, {}, text, both});
}

bool VerifyReport::isClean() const {
    return std::all_of(m_entries.begin(), m_entries.end(), [](Entry const& entry) {
        return (entry.refusal.empty() || entry.isRefusedByBoth) && entry.check.leaks.empty() &&
               countRequired(entry.check) == entry.check.differences.size();
    });
}

void VerifyReport::writeText(std::ostream& out) const {
    std::size_t leaks = 0;
    std::size_t unexplained = 0;
    for (Entry const& entry : m_entries) {
        writeEntry(out, entry);
        leaks += entry.check.leaks.size();
        unexplained += entry.check.differences.size() - countRequired(entry.check);
    }
    out << counted(leaks, "leak") << ", " << counted(unexplained, "unexplained difference") << '\n';
}

void VerifyReport::writeEntry(std::ostream& out, Entry const& entry) const {
    auto const line = [&](std::string const& text) { out << printable(text, false) << '\n'; };
    auto const described = [&](VEX_HANDLE object) { return describeObject(object, m_locale); };
    std::string const who = entry.user.empty() ? "everybody" : entry.user;
    if (!entry.refusal.empty()) {
        line(who +
             (entry.isRefusedByBoth ? ": every request is refused: "
                                    : ": tree and check differ, one is refused: ") +
             entry.refusal);
        return;
    }
    TreeCheck const& check = entry.check;
    std::size_t const required = countRequired(check);
    line(who + ": " + counted(check.objects, "object") + " compared, " +
         counted(check.differences.size() - required, "unexplained difference") + ", " +
         std::to_string(required) + " required, " + counted(check.leaks.size(), "leak"));
    for (Leak const& leak : check.leaks) {
        line("  leak: the " + described(leak.object) + " names " + leak.reference.toUtf8() +
             " in its " + leak.property.toUtf8() + ", and the " + described(leak.named) +
             " is hidden");
    }
    for (TreeDifference const& difference : check.differences) {
        line(std::string(isRequired(difference.cause) ? "  required: " : "  unexplained: ") +
             (difference.inTree ? "in the tree, not accessible: "
                                : "accessible, not in the tree: ") +
             described(difference.object) + ": " + textOf(difference.cause));
    }
}

void VerifyReport::writeJson(std::ostream& out) const {
    Json users = Json::array();
    auto const object = [&](VEX_HANDLE handle) {
        return Json{{"id", keyOf(m_model, handle).toUtf8()},
                    {"class", classOf(handle).toUtf8()},
                    {"name", nameIn(m_locale, handle).toUtf8()}};
    };
    for (Entry const& entry : m_entries) {
        Json user{{"user", entry.user}};
        if (!entry.refusal.empty()) {
            user["refused"] = entry.isRefusedByBoth ? "both" : "one";
            user["text"] = entry.refusal;
            users.push_back(std::move(user));
            continue;
        }
        user["objects"] = entry.check.objects;
        user["leaks"] = Json::array();
        for (Leak const& leak : entry.check.leaks) {
            user["leaks"].push_back({{"object", object(leak.object)},
                                     {"property", leak.property.toUtf8()},
                                     {"reference", leak.reference.toUtf8()},
                                     {"named", object(leak.named)}});
        }
        user["differences"] = Json::array();
        for (TreeDifference const& difference : entry.check.differences) {
            user["differences"].push_back({{"object", object(difference.object)},
                                           {"inTree", difference.inTree},
                                           {"accessible", !difference.inTree},
                                           {"cause", codeOf(difference.cause)},
                                           {"required", isRequired(difference.cause)}});
        }
        users.push_back(std::move(user));
    }
    constexpr int indent = 2;
    out << Json{{"clean", isClean()}, {"users", users}}.dump(indent) << '\n';
}

} // namespace vex
