#include "apps/vexma/Commands.h"
#include "apps/vexma/DiffReport.h"
#include "apps/vexma/TreeAnswer.h"
#include "host/protocol/JsonDifferences.h"

#include <memory>

namespace vex {

namespace {

/// What is given for the second side alone; the rest is as for the first.
struct OtherSide {
    std::string modelFile;
    std::string view;
    std::string locale;
    std::string user;
    std::string catalogFile;
    std::string modelPath;
    std::string replacingFile;

    void addTo(CommandSyntax& command) {
        struct Row {
            char const* option;
            std::string OtherSide::*value;
            char const* type;
            char const* help;
        };
        constexpr Row rows[] = {
            {"--other-user", &OtherSide::user, "NAME", "Compare with what this user sees"},
            {"--other-view", &OtherSide::view, "ID", "Compare with this view"},
            {"--other-locale", &OtherSide::locale, "L", "Compare with this language"},
            {"--other-file", &OtherSide::replacingFile, "FILE",
             "Compare with this model file in the place of the catalogue's"},
            {"--other-model", &OtherSide::modelPath, "PATH",
             "Compare with this model of the catalogue"},
            {"--other-catalog", &OtherSide::catalogFile, "FILE", "Compare with this catalogue"},
        };
        for (Row const& row : rows) {
            command.add({.name = row.option,
                         .into = &(this->*row.value),
                         .help = row.help,
                         .word = row.type,
                         .group = "Other side"});
        }
    }
};

std::string const& firstOf(std::string const& preferred, std::string const& otherwise) {
    return preferred.empty() ? otherwise : preferred;
}

struct DiffCommand {
    SourceOptions source;
    std::string view;
    OtherSide other;
    bool json = false;

    int run(Console& console) const {
        source.check();
        SourceOptions const otherSource = makeOther();
        Workplace first(source, console);
        Workplace second(first, otherSource, console);
        ModelTrees const before = askForTrees(first, I18NString::fromUtf8(view));
        ModelTrees const after =
            askForTrees(second, I18NString::fromUtf8(firstOf(other.view, view)));
        for (ModelTrees const* const trees : {&before, &after}) {
            if (trees->refusal) {
                return complainAbout(*trees->refusal, console);
            }
        }
        write(console, tellDifferences(sideOf(first, before), sideOf(second, after)));
        return Done;
    }

    SourceOptions makeOther() const {
        SourceOptions made = source;
        made.modelFile = firstOf(other.modelFile, source.modelFile);
        made.catalogFile = firstOf(other.catalogFile, source.catalogFile);
        made.modelPath = firstOf(other.modelPath, source.modelPath);
        made.user = firstOf(other.user, source.user);
        made.locale = firstOf(other.locale, source.locale);
        made.replacingFile = other.replacingFile;
        made.check();
        if (!made.replacingFile.empty() && made.catalogFile.empty()) {
            throw UsageException("--other-file needs --catalog; without one, give the other "
                                 "MODEL.xml behind the first");
        }
        if (source.modelFile == "-" && made.modelFile == "-") {
            throw UsageException("both models cannot come from standard input; name a file for "
                                 "one of them");
        }
        return made;
    }

    static ComparedSide sideOf(Workplace const& workplace, ModelTrees const& trees) {
        return {workplace.model(), workplace.locale(), trees.objects};
    }

    void write(Console& console, Differences const& differences) const {
        if (json) {
            console.out() << toJson(differences) << '\n';
        } else {
            drawDifferences(console.out(), differences, console.outHasColour());
        }
    }
};

} // namespace

CommandRun addDiffCommand(CommandSyntax& command) {
    auto const diff = std::make_shared<DiffCommand>();
    diff->source.addModelFileTo(command);
    command.add({.name = "OTHER.xml",
                 .into = &diff->other.modelFile,
                 .help = "A model file to compare with"});
    diff->source.addTo(command);
    command.add({.name = "--view",
                 .into = &diff->view,
                 .help = "Answer with this one of the user's views",
                 .word = "ID"});
    command.add({.name = "--json",
                 .into = &diff->json,
                 .help = "Write one JSON object in place of a tree"});
    diff->other.addTo(command);
    command.epilog =
        R"(Compares what two sides show: two users, two views, two languages, two models, or any
mix of them. Signs: + appears, - disappears, ~ changes. Objects of two models are the same
when their ids are, else when their references are.

Examples:
  vexma diff old.model.xml new.model.xml
  vexma diff --catalog retail.catalog.xml --model /content/retail --user carl \
      --other-file new.model.xml
  vexma diff --catalog retail.catalog.xml --model /content/retail --user admin \
      --other-user ann
  vexma diff --catalog retail.catalog.xml --model /content/retail --user admin \
      --view view.analyst --other-view view.clerk
  vexma diff retail.model.xml --other-locale de)";
    return [diff](Console& console) { return diff->run(console); };
}

} // namespace vex
