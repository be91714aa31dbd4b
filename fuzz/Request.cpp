#include "KRLException.h"
#include "KRLIDOM_Writer.h"
#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"

namespace {

constexpr std::string_view usualRequest =
    "<Metadata Depth='1'><Property n='*/@name'/><Property n='/@defaultLocale'/></Metadata>";

std::string usualAnswer() {
    vex::MetadataAnswer const answer = fuzz::request(fuzz::usualVisit(), usualRequest);
    return KRLIDOM_Writer::toUtf8(answer.response.document());
}

} // namespace

void fuzz::request(std::string_view input) {
    static std::string const usual = usualAnswer();
    constexpr std::size_t seldom = 16; // inputs of every 16th length look further
    try {
        vex::MetadataAnswer const answer = request(usualVisit(), input);
        requireSound(answer);
        if (input.size() % seldom == 0) {
            vex::MetadataAnswer const again = request(usualVisit(), input);
            require(again.end.kind == answer.end.kind && again.end.text == answer.end.text &&
                        KRLIDOM_Writer::toUtf8(again.response.document()) ==
                            KRLIDOM_Writer::toUtf8(answer.response.document()),
                    "the same request is answered alike");
        }
    } catch (KRLDocumentException const& problem) {
        require(!problem.GetProblem().empty(), "a refusal says why");
    }
    require(input.size() % seldom != 0 || usualAnswer() == usual,
            "other requests are answered as ever");
}
