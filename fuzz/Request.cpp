#include "KRLException.h"
#include "KRLIDOM_Writer.h"
#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"

namespace {

std::string usualAnswer() {
    auto const session = fuzz::openSession();
    auto const outcome = fuzz::ask(
        *session, "<Metadata Depth='1'><Property n='*/@name'/><Property n='/@defaultLocale'/>"
                  "</Metadata>");
    fuzz::close(*session);
    return KRLIDOM_Writer::toUtf8(outcome.response.document());
}

} // namespace

void fuzz::request(std::string_view input) {
    static std::string const usual = usualAnswer();
    constexpr std::size_t seldom = 16; // inputs of every 16th length look further
    auto const session = openSession();
    try {
        vex::ActionOutcome const outcome = ask(*session, input);
        requireSound(outcome);
        if (input.size() % seldom == 0) {
            vex::ActionOutcome const again = ask(*session, input);
            require(again.end == outcome.end && again.text == outcome.text &&
                        KRLIDOM_Writer::toUtf8(again.response.document()) ==
                            KRLIDOM_Writer::toUtf8(outcome.response.document()),
                    "a session answers the same request alike");
        }
    } catch (KRLDocumentException const& problem) {
        require(!problem.GetProblem().empty(), "a refusal says why");
    }
    close(*session);
    require(input.size() % seldom != 0 || usualAnswer() == usual,
            "other sessions are answered as ever");
}
