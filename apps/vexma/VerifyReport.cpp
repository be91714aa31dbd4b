#include "apps/vexma/VerifyReport.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/ExpansionNote.h"
#include "apps/vexma/TextColours.h"

#include <map>

namespace vex {

namespace {

class VerifyReport {
public:
    VerifyReport(std::ostream& out, bool all, bool colour)
        : m_out(out), m_all(all), m_colours(textColours(colour)) {}

    void writeUser(UserVerification const& user, bool isUnrestricted) {
        std::string const who = namesOf(user);
        if (!user.refusal.empty()) {
            line(m_colours.doubtful,
                 who + ": not compared, every request is refused: " + user.refusal);
            return;
        }
        if (!user.isCompared()) {
            for (VerifyFinding const& finding : user.findings) {
                line(colourOf(finding.kind), who + ": " + finding.text);
            }
            return;
        }
        auto const count = [&](VerifyKind kind) { return user.count(kind); };
        line(worstColour(user), who + ": " + counted(user.objects, "object") + " compared" +
                                    (isUnrestricted ? ", nothing is hidden: " : ": ") +
                                    counts(count, user.accepted(), isUnrestricted));
        if (std::string const note = expansionNote(user.notGoneIntoAgain); !note.empty()) {
            line(m_colours.detail, "  " + note);
        }
        writeFindings(user.findings);
        for (VerifyKindRow const& row : verifyKinds()) {
            if (std::size_t const left = user.leftOutOf(row.kind); left != 0) {
                line(colourOf(row.kind), "  " + prefixOf(row) + std::to_string(left) +
                                             " more past the limit; --max-findings raises it");
            }
        }
    }

    void writeSum(Verification const& verification) {
        for (VerifyFinding const& finding : verification.findings) {
            line(finding.isAccepted ? m_colours.detail : m_colours.bad,
                 (finding.isAccepted ? "accepted: " : "NOTHING IS VERIFIED: ") + finding.text);
        }
        std::size_t const compared = verification.comparedUsers();
        std::string const users =
            std::to_string(compared) + " of " + counted(verification.userCount(), "user");
        if (verification.count(VerifyKind::Unfinished) != 0) {
            line(m_colours.bad, "not finished: compared for " + users);
        }
        if (verification.count(VerifyKind::NotVerified) != 0) {
            line(m_colours.bad, "not verified: compared for " + users);
        }
        if (compared == 0 || verification.isUnrestricted()) {
            return; // nothing that could leak was looked at
        }
        auto const count = [&](VerifyKind kind) { return verification.count(kind); };
        line(verification.outcome() == VerifyOutcome::Clean ? m_colours.good : m_colours.bad,
             "compared for " + users + ": " + counts(count, verification.accepted(), false));
    }

private:
    void line(char const* colour, std::string const& text) {
        m_out << colour << printable(text, false) << (*colour == '\0' ? "" : m_colours.end) << '\n';
    }

    static std::string namesOf(UserVerification const& user) {
        constexpr std::size_t named = 4;
        std::string names = user.user.empty() ? "everybody" : user.user;
        for (std::size_t index = 0; index < user.alike.size(); ++index) {
            if (index == named) {
                return names + " and " + std::to_string(user.alike.size() - named) +
                       " more with the same roles";
            }
            names += ", " + user.alike[index];
        }
        return names;
    }

    /// "1 leak, 0 shown past the views, ..."; where nobody is restricted, only what there
    /// could be.
    template <class Count>
    static std::string counts(Count const& count, std::size_t accepted, bool isUnrestricted) {
        auto const told = [&](VerifyKind kind) { return counted(count(kind), rowOf(kind).noun); };
        std::string const harmless =
            (isUnrestricted
                 ? ""
                 : told(VerifyKind::JoinKey) + ", " + told(VerifyKind::HiddenContainer) + ", ") +
            told(VerifyKind::Required);
        return (isUnrestricted
                    ? ""
                    : told(VerifyKind::Leak) + ", " + told(VerifyKind::ShownPastViews) + ", ") +
               told(VerifyKind::Unexplained) + "; " + harmless +
               (accepted == 0 ? "" : "; " + std::to_string(accepted) + " accepted");
    }

    /// In the order of the kinds, those of a cause together.
    void writeFindings(std::vector<VerifyFinding> const& findings) {
        for (VerifyKindRow const& row : verifyKinds()) {
            std::map<std::string, std::size_t> written; // by cause
            for (VerifyFinding const& finding : findings) {
                if (finding.kind == row.kind && !finding.isAccepted &&
                    (++written[finding.cause] <= shownOfAKind || m_all)) {
                    line(colourOf(row.kind), "  " + prefixOf(row) + finding.text);
                }
            }
            for (auto const& [cause, count] : written) {
                if (count > shownOfAKind && !m_all) {
                    line(m_colours.detail,
                         "  " + prefixOf(row) + std::to_string(count - shownOfAKind) + " more" +
                             (cause.empty() ? "" : " (" + cause + ")") + "; --all shows them");
                }
            }
        }
    }

    static std::string prefixOf(VerifyKindRow const& row) {
        constexpr struct {
            VerifyKind kind;
            char const* text;
        } prefixes[] = {{VerifyKind::Unexplained, "unexplained: "},
                        {VerifyKind::ShownPastViews, "shown past the views: "}};
        for (auto const& prefix : prefixes) {
            if (prefix.kind == row.kind) {
                return prefix.text;
            }
        }
        return std::string(row.noun) + ": ";
    }

    char const* colourOf(VerifyKind kind) const {
        switch (rowOf(kind).outcome) {
        case VerifyOutcome::Clean:
            return m_colours.detail;
        case VerifyOutcome::ShownPastViews:
        case VerifyOutcome::NothingVerified:
            return m_colours.doubtful;
        case VerifyOutcome::Unfinished:
        case VerifyOutcome::NotVerified:
        case VerifyOutcome::Leaking:
            break;
        }
        return m_colours.bad;
    }

    char const* worstColour(UserVerification const& user) const {
        for (VerifyKind const kind :
             {VerifyKind::Leak, VerifyKind::Unexplained, VerifyKind::ShownPastViews}) {
            if (user.count(kind) != 0) {
                return colourOf(kind);
            }
        }
        return m_colours.good;
    }

    std::ostream& m_out;
    bool m_all;
    TextColours const& m_colours;
};

} // namespace

void writeVerification(std::ostream& out, Verification const& verification, bool all, bool colour) {
    VerifyReport report(out, all, colour);
    for (UserVerification const& user : verification.users) {
        report.writeUser(user, verification.isUnrestricted());
    }
    report.writeSum(verification);
}

} // namespace vex
