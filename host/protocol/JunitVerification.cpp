#include "host/protocol/JunitVerification.h"

#include "host/protocol/JunitText.h"

#include <algorithm>

namespace vex {

namespace {

struct Suite {
    std::string name;
    std::string tests;
    std::string properties;
    std::size_t count = 0;
    std::size_t failures = 0;
    std::size_t skipped = 0;

    /// `leftOut`: those that are not among the findings.
    void add(VerifyKindRow const& row, std::vector<VerifyFinding> const& findings,
             std::size_t leftOut, std::size_t mostLines) {
        std::string lines;
        std::size_t found = 0;
        for (VerifyFinding const& finding : findings) {
            if (finding.kind == row.kind && !finding.isAccepted && ++found <= mostLines) {
                lines += junitText(finding.text) + '\n';
            }
        }
        begin(row.code);
        if (found + leftOut == 0) {
            tests += "/>\n";
            return;
        }
        ++failures;
        lines += found > mostLines
                     ? "and " + std::to_string(found - mostLines) + " more; --all shows them\n"
                     : "";
        lines += leftOut != 0
                     ? std::to_string(leftOut) + " more past the limit; --max-findings raises it\n"
                     : "";
        tests += std::string(">\n      <failure type=\"") + row.code + "\" message=\"" +
                 std::to_string(found + leftOut) + ": " + junitText(row.meaning) + "\">" + lines +
                 "</failure>\n    </testcase>\n";
    }
    void addSkipped(char const* test, std::string const& why) {
        ++skipped;
        begin(test);
        tests += ">\n      <skipped message=\"" + junitText(why) + "\"/>\n    </testcase>\n";
    }
    /// Counts what fails no test.
    void addCount(VerifyKindRow const& row, std::size_t found) {
        properties += std::string("      <property name=\"") + row.code + "\" value=\"" +
                      std::to_string(found) + "\"/>\n";
    }
    std::string text() const {
        return "  <testsuite name=\"" + junitText(name) + "\" tests=\"" + std::to_string(count) +
               "\" failures=\"" + std::to_string(failures) + "\" skipped=\"" +
               std::to_string(skipped) + "\">\n" +
               (properties.empty() ? ""
                                   : "    <properties>\n" + properties + "    </properties>\n") +
               tests + "  </testsuite>\n";
    }

private:
    void begin(char const* test) {
        ++count;
        tests +=
            "    <testcase classname=\"vexma.verify." + junitText(name) + "\" name=\"" + test + '"';
    }
};

bool concernsAll(VerifyKind kind) {
    return kind == VerifyKind::Unrestricted || kind == VerifyKind::NobodyCompared;
}

Suite suiteOf(UserVerification const& user, std::string const& name, std::size_t mostLines) {
    Suite suite;
    suite.name = name.empty() ? "everybody" : name;
    if (!user.refusal.empty()) {
        suite.addSkipped("requests", "every request is refused: " + user.refusal);
        return suite;
    }
    for (VerifyKindRow const& row : verifyKinds()) {
        bool const isKnown = user.isCompared() || user.count(row.kind) != 0;
        if (row.outcome != VerifyOutcome::Clean && !concernsAll(row.kind) && isKnown) {
            suite.add(row, user.findings, user.leftOutOf(row.kind), mostLines);
        }
        if (row.outcome == VerifyOutcome::Clean && user.isCompared()) {
            suite.addCount(row, user.count(row.kind));
        }
    }
    return suite;
}

} // namespace

std::string toJunit(Verification const& verification, std::size_t mostLines) {
    std::vector<Suite> suites;
    Suite& all = suites.emplace_back();
    all.name = "all";
    for (VerifyKindRow const& row : verifyKinds()) {
        if (concernsAll(row.kind)) {
            all.add(row, verification.findings, 0, mostLines);
        }
    }
    for (UserVerification const& user : verification.users) {
        suites.push_back(suiteOf(user, user.user, mostLines));
        for (std::string const& other : user.alike) {
            suites.push_back(suiteOf(user, other, mostLines));
        }
    }
    std::size_t tests = 0;
    std::size_t failures = 0;
    std::string text;
    for (Suite const& suite : suites) {
        tests += suite.count;
        failures += suite.failures;
        text += suite.text();
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"vexma verify\" "
           "tests=\"" +
           std::to_string(tests) + "\" failures=\"" + std::to_string(failures) + "\">\n" + text +
           "</testsuites>\n";
}

} // namespace vex
