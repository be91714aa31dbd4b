#include "KRLException.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/InputSizes.h"
#include "apps/vexma/SourceOptions.h"
#include "host/catalogue/Catalogue.h"
#include "host/import/draft/WrittenFiles.h"
#include "host/import/xml/FileText.h"
#include "host/translate/TranslatableModel.h"

#include <memory>

namespace vex {

namespace {

struct TranslateCommand {
    std::string action;
    std::string source;
    std::string modelPath;
    std::string file; // of translations, to apply
    std::string locale;
    std::string output;
    std::string format;
    std::string updateFile;
    bool exitCode = false;
    InputSizes sizes;

    int run(Console& console) const {
        check();
        std::string const modelFile = findModelFile();
        TranslatableModel const model(readFileText(modelFile, sizes.model()), nameOf(modelFile));
        return action == "export" ? exportTexts(model, console) : apply(model, console);
    }

    void check() const {
        bool const isExport = action == "export";
        if (isExport && !file.empty()) {
            throw UsageException("\"translate export\" reads no translations; leave out " +
                                 printable(file, false));
        }
        if (isExport && locale.empty()) {
            throw UsageException("no language is given; add --locale L");
        }
        if (isExport && (!updateFile.empty() || exitCode)) {
            throw UsageException(
                "--update and --exit-code are for \"translate apply\"; leave them out");
        }
        if (!isExport && file.empty()) {
            throw UsageException("no translations are given; add their file behind the model");
        }
        if (!isExport && source == "-" && file == "-") {
            throw UsageException("the model and the translations cannot both be read from "
                                 "standard input");
        }
        if (output == "-" && updateFile == "-") {
            throw UsageException("the model and the translations cannot both be written to "
                                 "standard output");
        }
        if (!locale.empty() && !I18NLocale::isKnown(I18NString::fromUtf8(locale))) {
            throw UsageException("the locale \"" + printable(locale, false) +
                                 "\" is unknown; write one like de or de_AT");
        }
    }

    static std::string nameOf(std::string const& name) {
        return name == "-" ? "standard input" : name;
    }

    std::string findModelFile() const {
        if (modelPath.empty()) {
            return source;
        }
        auto const catalogue = loadCatalogue(source, sizes.catalogue());
        CatalogueModel const* const model = catalogue->findModel(I18NString::fromUtf8(modelPath));
        if (model == nullptr) {
            throw KRLDocumentException(nameOf(source), 0, 0,
                                       "no model has the path \"" + modelPath + "\"");
        }
        return model->file;
    }

    TranslationFormat const& formatOf(std::string const& name) const {
        TranslationFormat const* const found =
            format.empty() ? translationFormatOf(name) : findTranslationFormat(format);
        if (found == nullptr) {
            throw UsageException("the name " + printable(name, false) +
                                 " does not tell the format; end it with .xlf or .csv, or add "
                                 "--format");
        }
        return *found;
    }

    static void refuseOwnLanguage(TranslatableModel const& model, I18NLocale target) {
        if (model.isOwnLanguage(target)) {
            throw UsageException("the names in " + model.defaultLocale().getName().toUtf8() +
                                 " are those that expressions use; translate into another "
                                 "language than " +
                                 target.getName().toUtf8());
        }
    }

    int exportTexts(TranslatableModel const& model, Console& console) const {
        I18NLocale const target(I18NString::fromUtf8(locale));
        refuseOwnLanguage(model, target);
        TranslationFile const texts = model.texts(target);
        write({{output, formatOf(output).write(texts)}}, console);
        if (output != "-") {
            std::size_t missing = 0;
            for (TranslationUnit const& unit : texts.units) {
                missing += unit.target.empty() ? 1 : 0;
            }
            console.out() << "texts: " << texts.units.size() << ", not translated: " << missing
                          << '\n';
        }
        return Done;
    }

    I18NLocale targetOf(TranslationFile const& translations) const {
        I18NLocale const asked =
            locale.empty() ? I18NLocale() : I18NLocale(I18NString::fromUtf8(locale));
        if (!translations.targetLocale && locale.empty()) {
            throw UsageException("the translations do not say their language; add --locale L");
        }
        if (translations.targetLocale && !locale.empty() && *translations.targetLocale != asked) {
            throw UsageException("the translations are in " +
                                 translations.targetLocale->getName().toUtf8() + ", not in " +
                                 asked.getName().toUtf8() + "; leave --locale out");
        }
        return translations.targetLocale.value_or(asked);
    }

    int apply(TranslatableModel const& model, Console& console) const {
        TranslationFile const translations =
            formatOf(file).read(readFileText(file, translationLimit), nameOf(file));
        I18NLocale const target = targetOf(translations);
        refuseOwnLanguage(model, target);
        TranslationOutcome const outcome = model.apply(translations, target, nameOf(file));
        std::vector<FileToWrite> files{{output, outcome.document}};
        if (!updateFile.empty()) {
            files.push_back({updateFile, formatOf(updateFile).write(outcome.renewed)});
        }
        write(files, console);
        if (output != "-" && updateFile != "-") {
            console.out() << "added: " << outcome.added << ", replaced: " << outcome.replaced
                          << ", as before: " << outcome.same
                          << ", not translated: " << outcome.untranslated + outcome.missing << '\n';
        }
        complain(outcome, console);
        bool const isUpToDate = outcome.changed.empty() && outcome.gone.empty();
        return exitCode && !isUpToDate ? Different : Done;
    }

    static void write(std::vector<FileToWrite> const& files, Console& console) {
        std::vector<FileToWrite> named;
        for (FileToWrite const& each : files) {
            if (each.file != "-") {
                named.push_back(each);
            }
        }
        writeFilesTogether(named);
        for (FileToWrite const& each : files) {
            if (each.file == "-") {
                console.out(Spelling::Drawn) << each.text;
            } else if (named.size() == files.size()) {
                console.out() << "wrote " << printable(each.file, false) << '\n';
            }
        }
    }

    static std::string shown(std::string const& text) { return '"' + text + '"'; }

    static void complain(TranslationOutcome const& outcome, Console& console) {
        for (auto const& [unit, now] : outcome.changed) {
            std::string const what = "the " + unit.property + " of " + shown(unit.object);
            console.complain(unit.source == now
                                 ? what + " is marked as changed: look at " + shown(unit.target)
                                 : what + " has changed from " + shown(unit.source) + " to " +
                                       shown(now) + ": look at " + shown(unit.target));
        }
        for (TranslationUnit const& unit : outcome.gone) {
            console.complain("the " + unit.property + " of " + shown(unit.object) +
                             (unit.target.empty()
                                  ? " is gone; it was not translated"
                                  : " is gone, so " + shown(unit.target) + " was not applied"));
        }
        if (!outcome.changed.empty() || !outcome.gone.empty()) {
            console.complain("changed: " + std::to_string(outcome.changed.size()) +
                             ", gone: " + std::to_string(outcome.gone.size()) +
                             "; --update FILE keeps and marks them");
        }
    }
};

} // namespace

CommandRun addTranslateCommand(CommandSyntax& command) {
    auto const translate = std::make_shared<TranslateCommand>();
    command.add({.name = "ACTION",
                 .into = &translate->action,
                 .help = "Write texts to translate, or put translations into a model",
                 .isRequired = true,
                 .choices = {"export", "apply"}});
    command.add({.name = "SOURCE",
                 .into = &translate->source,
                 .help = "The model document, or with --model the catalogue",
                 .isRequired = true});
    command.add({.name = "FILE",
                 .into = &translate->file,
                 .help = "The translations to apply, XLIFF or CSV; \"-\" for standard input"});
    command.add({.name = "--model",
                 .into = &translate->modelPath,
                 .help = "The path of the model in the catalogue",
                 .word = "PATH"});
    command.add({.name = "--locale",
                 .into = &translate->locale,
                 .help = "The language to translate into (apply: of a file that does not say it)",
                 .word = "L"});
    command.add({.name = "-o,--output",
                 .into = &translate->output,
                 .help = "The file to write, texts or model; \"-\" for standard output",
                 .word = "FILE",
                 .isRequired = true});
    command.add({.name = "--format",
                 .into = &translate->format,
                 .help = "The form of the translations (default: as the file's name ends)",
                 .word = "FORM",
                 .choices = {"xliff", "csv"}});
    command.add({.name = "--update",
                 .into = &translate->updateFile,
                 .help = "Write the translations anew, with today's texts; what changed or is "
                         "gone is kept and marked",
                 .word = "FILE"});
    command.add({.name = "--exit-code",
                 .into = &translate->exitCode,
                 .help = "End with status 1 when texts changed or are gone"});
    translate->sizes.addTo(command);
    command.epilog =
        R"(Names, descriptions and screen tips, by the ids of their objects. Export writes them with
the translations so far; apply writes the model with those of a file. A text that has changed
since it was translated is told of, and so is one that is gone. Exit status: 3 when something
cannot be read; then nothing is written.

Examples:
  vexma translate export shop.catalog.xml --model /content/shop --locale de -o shop.de.xlf
  vexma translate apply shop.catalog.xml shop.de.xlf --model /content/shop -o shop.model.xml
  vexma translate apply shop.model.xml shop.de.csv -o de/shop.model.xml --update shop.de.csv)";
    return [translate](Console& console) { return translate->run(console); };
}

} // namespace vex
