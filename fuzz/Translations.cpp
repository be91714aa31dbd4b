#include "I18NString.h"
#include "KRLException.h"
#include "fuzz/FuzzTargets.h"
#include "host/translate/TranslatableModel.h"

#include <optional>

namespace {

constexpr char const* document = R"(<model id="m" name="M"><namespace id="n" name="N">
<querySubject id="q" description="d"><property name="name">Q</property>
<property name="name" locale="de">K</property></querySubject></namespace></model>)";

std::optional<vex::TranslationFile> read(vex::TranslationFormat const& format,
                                         std::string_view input) {
    try {
        return format.read(input, "t");
    } catch (KRLDocumentException const& problem) {
        fuzz::require(!problem.GetProblem().empty(), "an error has a text");
        return std::nullopt;
    }
}

bool areSame(vex::TranslationFile const& one, vex::TranslationFile const& other) {
    bool same = one.units.size() == other.units.size();
    for (std::size_t each = 0; same && each < one.units.size(); ++each) {
        same = one.units[each].key() == other.units[each].key() &&
               one.units[each].target == other.units[each].target;
    }
    return same;
}

void translate(char const* name, std::string_view input) {
    vex::TranslationFormat const& format = *vex::findTranslationFormat(name);
    auto file = read(format, input);
    if (!file) {
        return;
    }
    I18NLocale const target(I18NString("de"));
    vex::TranslatableModel const model(document, "m");
    vex::TranslationOutcome outcome;
    try {
        outcome = model.apply(*file, target, "t");
    } catch (KRLDocumentException const&) {
        return; // a property that is not translated, a text that no document holds
    }
    std::size_t const found =
        outcome.added + outcome.replaced + outcome.same + outcome.untranslated;
    fuzz::require(found + outcome.gone.size() == file->units.size(), "each unit is counted once");
    vex::TranslatableModel const translated(outcome.document, "m");
    fuzz::require(translated.texts(target).units.size() == model.texts(target).units.size(),
                  "a translated model has the same texts");
    vex::TranslationOutcome const again = translated.apply(*file, target, "t");
    fuzz::require(again.added + again.replaced == 0 && again.document == outcome.document,
                  "what is applied again changes nothing");
}

} // namespace

void fuzz::xliff(std::string_view input) {
    translate("xliff", input);
}

void fuzz::csv(std::string_view input) {
    translate("csv", input);
    if (auto const file = read(*vex::findTranslationFormat("csv"), input)) {
        auto const again = read(*vex::findTranslationFormat("csv"),
                                vex::findTranslationFormat("csv")->write(*file));
        require(again.has_value() && areSame(*file, *again), "what is written comes back");
    }
}
