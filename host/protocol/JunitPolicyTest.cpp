#include "host/protocol/JunitPolicyTest.h"

#include "host/protocol/JunitText.h"

#include <algorithm>

namespace vex {

namespace {

struct PolicySuite {
    std::string name;
    std::string tests{};
    std::size_t count = 0;
    std::size_t failures = 0;
    std::size_t skipped = 0;
};

void add(PolicySuite& suite, ExpectationResult const& result) {
    ++suite.count;
    suite.tests += "    <testcase classname=\"" + junitText(result.who) + "\" name=\"" +
                   junitText(result.expected) + "\" file=\"" + junitText(result.file) +
                   "\" line=\"" + std::to_string(result.place.line) + '"';
    if (result.holds()) {
        suite.tests += "/>\n";
        return;
    }
    if (!result.isFinished) {
        ++suite.skipped;
        suite.tests +=
            ">\n      <skipped message=\"" + junitText(result.problem) + "\"/>\n    </testcase>\n";
        return;
    }
    ++suite.failures;
    suite.tests += ">\n      <failure message=\"" +
                   junitText(result.who + " " + result.expected + ": no") + "\">" +
                   junitText(describeFailure(result)) + "</failure>\n    </testcase>\n";
}

} // namespace

std::string describeFailure(ExpectationResult const& result) {
    std::string text = result.problem;
    for (UnexpectedObject const& object : result.objects) {
        text += (text.empty() ? "" : "\n") + object.text +
                (object.why.empty() ? "" : ": " + object.why);
    }
    if (result.moreObjects != 0) {
        text += "\nand " + std::to_string(result.moreObjects) + " more";
    }
    return text;
}

std::string toJunit(std::vector<ExpectationResult> const& results) {
    std::vector<PolicySuite> suites;
    for (ExpectationResult const& result : results) {
        if (suites.empty() || suites.back().name != result.file) {
            suites.push_back({result.file});
        }
        add(suites.back(), result);
    }
    std::size_t failures = 0;
    std::string text;
    for (PolicySuite const& suite : suites) {
        failures += suite.failures;
        text += "  <testsuite name=\"" + junitText(suite.name) + "\" tests=\"" +
                std::to_string(suite.count) + "\" failures=\"" + std::to_string(suite.failures) +
                "\" skipped=\"" + std::to_string(suite.skipped) + "\">\n" + suite.tests +
                "  </testsuite>\n";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"vexma test\" tests=\"" +
           std::to_string(results.size()) + "\" failures=\"" + std::to_string(failures) + "\">\n" +
           text + "</testsuites>\n";
}

} // namespace vex
