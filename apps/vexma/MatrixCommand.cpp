#include "VexObject.h"
#include "apps/vexma/AccessOfAll.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/SightReport.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/Viewers.h"
#include "apps/vexma/WordWarning.h"
#include "host/insight/KnownWords.h"
#include "host/insight/NearestWord.h"
#include "host/protocol/JsonSight.h"
#include "host/service/ObjectByName.h"

#include <algorithm>
#include <map>
#include <memory>

namespace vex {

namespace {

/// How the matrix is written, by the word for `--format`.
using MatrixFormat = void (*)(Console&, SightMatrix const&);
std::map<std::string, MatrixFormat> const matrixFormats{
    {"text",
     [](Console& console, SightMatrix const& matrix) {
         writeMatrix(console.out(), matrix, console.outHasColour());
     }},
    {"csv", [](Console& console, SightMatrix const& matrix) { console.out() << toCsv(matrix); }},
    {"json",
     [](Console& console, SightMatrix const& matrix) {
         std::ostream& out = console.out(Spelling::Json);
         writeJson(out, matrix);
         out << '\n';
     }},
};

struct MatrixCommand {
    SourceOptions source;
    std::string format = "text";
    std::string by = "users";
    std::vector<std::string> classes;
    std::string below;

    int run(Console& console) {
        source.forAllUsers = true;
        source.check();
        if (by == "roles" && !source.user.empty()) {
            throw UsageException("--by roles asks for every role, not for a user's; leave --user "
                                 "out, or --by roles to ask for the user");
        }
        Workplace const workplace(source, console);
        complainAboutLocale(workplace, console);
        checkClasses(workplace.model());
        Viewers const viewers = by == "roles"
                                    ? Viewers::rolesOf(workplace.catalogue(), workplace.modelPath())
                                    : Viewers::usersOf(workplace.catalogue(), source.user);
        if (viewers.all().empty()) {
            throw UsageException("there are no roles: a model file alone has no users; give "
                                 "--catalog CATALOG.xml --model PATH");
        }
        SightMatrix matrix;
        std::vector<std::size_t> rows;
        CallEnd const end = workplace.together([&] {
            rows = rowsOf(workplace.model());
            for (std::size_t const row : rows) {
                matrix.rows.push_back({labelOf(workplace.model(), workplace.model().getElement(row),
                                               workplace.locale()),
                                       {}});
                Budget::chargeBytes(matrix.rows.back().object.byteCount());
            }
        });
        if (!end.isAnswered()) {
            complainAbout(end, console);
            return Unfinished; // nothing is known of anybody
        }
        bool isFinished = true;
        for (Viewer const& viewer : viewers.all()) {
            isFinished = addColumn(workplace, viewer, rows, matrix, console) && isFinished;
        }
        matrixFormats.at(format)(console, matrix);
        return isFinished ? Done : Unfinished;
    }

    /// A class that neither the model nor the system knows is a slip: nothing would be drawn.
    void checkClasses(Model const& model) const {
        std::vector<I18NString> known = collectionsOf(model);
        known.insert(known.end(), KnownWords::classes().begin(), KnownWords::classes().end());
        for (std::string const& name : classes) {
            I18NString const asked = I18NString::fromUtf8(name);
            if (std::find(known.begin(), known.end(), asked) == known.end()) {
                I18NString const* const nearest = nearestWord(asked, known);
                throw UsageException("the model has no object of the class \"" + name + '"' +
                                     didYouMean(nearest == nullptr ? "" : nearest->toUtf8()));
            }
        }
    }

    /// The elements that are asked for: of namespaces and what is in them, unless classes
    /// or a place are named.
    std::vector<std::size_t> rowsOf(Model const& model) const {
        VEX_HANDLE const top =
            below.empty() ? VEX_HANDLE() : findObject(model, I18NString::fromUtf8(below));
        std::vector<std::size_t> rows;
        for (std::size_t number = 0; number < model.elementCount(); ++number) {
            VEX_HANDLE const object = model.getElement(number);
            bool const isOfClass = classes.empty()
                                       ? top.IsNotNull() || outermostNamespaceOf(object).IsNotNull()
                                       : std::find(classes.begin(), classes.end(),
                                                   classOf(object).toUtf8()) != classes.end();
            if (isOfClass && (!top.IsNotNull() || standsBelow(object, top))) {
                rows.push_back(number);
            }
        }
        return rows;
    }

    static bool standsBelow(VEX_HANDLE object, VEX_HANDLE top) {
        for (VEX_HANDLE at = object; at.IsNotNull(); at = VexObject(at).GetParent()) {
            if (at == top) {
                return true;
            }
        }
        return false;
    }

    /// False when the check did not come to its end.
    static bool addColumn(Workplace const& workplace, Viewer const& viewer,
                          std::vector<std::size_t> const& rows, SightMatrix& matrix,
                          Console& console) {
        Workplace further(workplace, viewer.user());
        std::vector<Sight> sights;
        CallEnd end;
        CallEnd const whole =
            further.together([&] { end = look(further, viewer.name, sights, console); });
        if (!whole.isAnswered()) {
            end = whole;
        }
        if (!end.isAnswered()) {
            sights.assign(further.model().elementCount(),
                          end.isDecided() ? Sight::Refused : Sight::Unknown);
        }
        matrix.columns.push_back({viewer.name, viewer.alike, end.text});
        for (std::size_t number = 0; number < rows.size(); ++number) {
            matrix.rows[number].cells.push_back(sights[rows[number]]);
        }
        return end.isDecided();
    }

    /// How somebody sees each element; how the call ended that was not answered.
    static CallEnd look(Workplace& workplace, std::string const& name, std::vector<Sight>& sights,
                        Console& console) {
        Progress progress(console, "asking for " + name);
        AccessOfAll const access = askForAccessOfAll(workplace, progress);
        if (!access.end.isAnswered()) {
            return access.end;
        }
        ModelTrees const trees = askForTrees(workplace);
        if (trees.refusal) {
            return *trees.refusal;
        }
        sights = sightOfAll(workplace.model(), trees.objects, access.verdicts);
        return access.end;
    }
};

} // namespace

CommandRun addMatrixCommand(CommandSyntax& command) {
    auto const matrix = std::make_shared<MatrixCommand>();
    matrix->source.addModelFileTo(command);
    matrix->source.addTo(command);
    command.add({.name = "--by",
                 .into = &matrix->by,
                 .help = "What stands in the columns",
                 .word = "WHO",
                 .showsDefault = true,
                 .choices = {"users", "roles"}});
    command.add({.name = "--class",
                 .into = &matrix->classes,
                 .help = "Only objects of this class (repeatable)",
                 .word = "CLASS"});
    command.add({.name = "--below",
                 .into = &matrix->below,
                 .help = "Only this object, an id or reference, and what is in it",
                 .word = "OBJECT"});
    std::vector<std::string> words;
    for (auto const& [word, format] : matrixFormats) {
        words.push_back(word);
    }
    command.add({.name = "--format",
                 .into = &matrix->format,
                 .help = "How to write it",
                 .word = "FORMAT",
                 .showsDefault = true,
                 .choices = words});
    command.epilog =
        R"(Draws which objects each user of the catalogue sees, or each role alone would see:
yes, no, past (in a tree although the views leave it out), - (every request is refused),
? (the check did not finish: a limit, an interrupt or an odd answer of the plug-in ended it).
Without --class and --below: namespaces and all that is in them. Users with the same roles
share a column in text.

Exit status: 5 when the check did not finish for somebody; else as for every command.

Examples:
  vexma matrix --catalog retail.catalog.xml --model /content/retail --class querySubject
  vexma matrix --catalog retail.catalog.xml --model /content/retail --by roles \
      --below '[Sales].[Orders]'
  vexma matrix --catalog retail.catalog.xml --model /content/retail --format csv > who.csv)";
    return [matrix](Console& console) { return matrix->run(console); };
}

} // namespace vex
