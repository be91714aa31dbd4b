#include "apps/vexma/Commands.h"
#include "apps/vexma/DiffReport.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/Viewers.h"
#include "apps/vexma/WordWarning.h"
#include "host/protocol/JsonDifferences.h"

#include <algorithm>
#include <map>
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

/// Both sides, as one user sees them.
struct BothSides {
    Workplace& before;
    Workplace& after;
    I18NString viewBefore;
    I18NString viewAfter;
};

/// What each side shows in one language; how the call ended that was not answered.
struct BothTrees {
    ModelTrees before;
    ModelTrees after;
};

BothTrees askForBoth(BothSides const& sides) {
    return {askForTrees(sides.before, sides.viewBefore), askForTrees(sides.after, sides.viewAfter)};
}

/// The viewers of a side by the names of those who look as they do.
class ViewersByName {
public:
    explicit ViewersByName(std::vector<Viewer> const& viewers) {
        for (std::size_t place = 0; place < viewers.size(); ++place) {
            for (std::string& name : viewers[place].names()) {
                m_places.emplace(std::move(name), place);
            }
        }
    }

    /// The names of a viewer of the other side, by the place of the viewer here.
    std::map<std::size_t, std::vector<std::string>> findAll(Viewer const& viewer) const {
        std::map<std::size_t, std::vector<std::string>> found;
        for (std::string& name : viewer.names()) {
            auto const known = m_places.find(name);
            if (known != m_places.end()) {
                found[known->second].push_back(std::move(name));
            }
        }
        return found;
    }

private:
    std::map<std::string, std::size_t> m_places;
};

struct DiffCommand {
    SourceOptions source;
    std::string view;
    OtherSide other;
    bool json = false;
    bool hasExitCode = false;
    bool allUsers = false;

    int run(Console& console) {
        source.forAllUsers = allUsers;
        source.check();
        if (allUsers && !(source.user + other.user + view + other.view).empty()) {
            throw UsageException("--all-users compares each user with himself; leave out --user, "
                                 "--other-user, --view and --other-view");
        }
        SourceOptions const otherSource = makeOther();
        Workplace first(source, console);
        Workplace second(first, otherSource, console);
        RequestWarnings warnings{StrictOption()};
        warnAboutLocale(first, warnings);
        warnAboutLocale(second, warnings); // told once when it is the same
        warnings.finish(console, Done);
        std::vector<RightChange> rights;
        CallEnd const end =
            first.together([&] { rights = compareRights(rightsOf(first), rightsOf(second)); });
        if (!end.isAnswered()) {
            return complainAbout(end, console);
        }
        return allUsers ? runForAll(first, second, rights, console)
                        : runForOne(first, second, rights, console);
    }

    int runForOne(Workplace& first, Workplace& second, std::vector<RightChange> const& rights,
                  Console& console) const {
        UserDifferences told;
        if (CallEnd const end = compare(sidesOf(first, second), told); !end.isAnswered()) {
            return complainAbout(end, console);
        }
        if (json) {
            std::ostream& out = console.out(Spelling::Json);
            writeJson(out, told.differences, rights);
            out << '\n';
        } else {
            writeRights(console.out(), rights, console.outHasColour());
            drawDifferences(console.out(), told.differences, console.outHasColour());
        }
        return statusOf(told.areNone() && rights.empty());
    }

    /// The users that both catalogues have; those with the same roles once.
    int runForAll(Workplace& first, Workplace& second, std::vector<RightChange> const& rights,
                  Console& console) const {
        Viewers const before = Viewers::usersOf(first.catalogue(), "");
        Viewers const after = Viewers::usersOf(second.catalogue(), "");
        std::vector<UserDifferences> users;
        users.reserve(before.all().size()); // more only where those alike differ on a side
        bool areNone = rights.empty();
        int status = Done;
        ViewersByName const others(after.all());
        for (Viewer const& was : before.all()) {
            for (auto const& [is, names] : others.findAll(was)) {
                Workplace one(first, was.user());
                Workplace two(second, after.all()[is].user());
                UserDifferences& told = users.emplace_back();
                told.user = names.front();
                told.alike.assign(names.begin() + 1, names.end());
                if (CallEnd const end = compare(sidesOf(one, two), told); !end.isDecided()) {
                    status = complainAbout(end, console);
                }
                areNone = areNone && told.areNone();
            }
        }
        if (json) {
            std::ostream& out = console.out(Spelling::Json);
            writeJson(out, users, rights);
            out << '\n';
        } else {
            writeRights(console.out(), rights, console.outHasColour());
            for (UserDifferences const& user : users) {
                drawDifferences(console.out(), user, console.outHasColour());
            }
        }
        return status != Done ? status : statusOf(areNone);
    }

    int statusOf(bool areNone) const { return hasExitCode && !areNone ? Different : Done; }

    /// All that is done for a user, under one budget. Gives how the call ended that was not
    /// answered, and who was refused.
    CallEnd compare(BothSides const& sides, UserDifferences& told) const {
        CallEnd end;
        CallEnd const whole = sides.before.together([&] { end = compareLanguages(sides, told); });
        if (whole.isAnswered()) {
            return end;
        }
        told.unfinished = whole.text;
        told.differences = {};
        return whole;
    }

    /// Every one that both models have, unless one was asked for.
    CallEnd compareLanguages(BothSides const& sides, UserDifferences& told) const {
        BothTrees const main = askForBoth(sides);
        if (std::optional<CallEnd> const end = endOf(main, told)) {
            return *end;
        }
        ComparedSide before{sides.before.model(), sides.before.locale(), main.before.objects, {}};
        ComparedSide after{sides.after.model(), sides.after.locale(), main.after.objects, {}};
        for (I18NLocale const& locale : furtherLanguages(sides)) {
            Workplace one(sides.before, locale);
            Workplace two(sides.after, locale);
            BothTrees const trees = askForBoth({one, two, sides.viewBefore, sides.viewAfter});
            if (std::optional<CallEnd> const end = endOf(trees, told)) {
                return *end;
            }
            before.others.push_back({locale, {before.model, trees.before.objects}});
            after.others.push_back({locale, {after.model, trees.after.objects}});
        }
        told.differences = tellDifferences(before, after);
        return {.kind = CallEnd::Kind::Answered};
    }

    /// How the first call ended that was not answered; what there is to say of it is noted.
    static std::optional<CallEnd> endOf(BothTrees const& trees, UserDifferences& told) {
        std::optional<CallEnd> first;
        for (ModelTrees const* const side : {&trees.before, &trees.after}) {
            if (!side->refusal) {
                continue;
            }
            std::string& said = !side->refusal->isDecided() ? told.unfinished
                                : side == &trees.before     ? told.refusedBefore
                                                            : told.refusedAfter;
            said = side->refusal->text;
            if (!first || (first->isDecided() && !side->refusal->isDecided())) {
                first = side->refusal;
            }
        }
        return first;
    }

    std::vector<I18NLocale> furtherLanguages(BothSides const& sides) const {
        std::vector<I18NLocale> languages;
        if (!source.locale.empty() || !other.locale.empty()) {
            return languages;
        }
        std::vector<I18NLocale> const& others = sides.after.model().locales();
        for (I18NLocale const& locale : sides.before.model().locales()) {
            bool const isMain = locale == sides.before.locale() && locale == sides.after.locale();
            if (!isMain && std::find(others.begin(), others.end(), locale) != others.end()) {
                languages.push_back(locale);
            }
        }
        return languages;
    }

    BothSides sidesOf(Workplace& first, Workplace& second) const {
        return {first, second, I18NString::fromUtf8(view),
                I18NString::fromUtf8(firstOf(other.view, view))};
    }

    static RightsSide rightsOf(Workplace const& workplace) {
        return {workplace.model(), workplace.catalogue().get(), workplace.modelPath()};
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
    command.add({.name = "--all-users",
                 .into = &diff->allUsers,
                 .help = "Compare for every user that both sides have"});
    command.add({.name = "--exit-code",
                 .into = &diff->hasExitCode,
                 .help = "End with status 1 when something differs"});
    diff->other.addTo(command);
    command.epilog =
        R"(Compares what two sides show: two users, two views, two languages, two models, or any
mix of them. Signs: + appears, - disappears, ~ changes. Objects of two models are the same
when their ids are, else when their references are. Without --locale every language is
compared; languages, views, grants and users that differ are told first.

Exit status: 0 done, with --exit-code 1 when something differs; 1 a side is refused; 2 and 3
as for every command.

Examples:
  vexma diff old.model.xml new.model.xml
  vexma diff --catalog retail.catalog.xml --model /content/retail --user carl \
      --other-file new.model.xml
  vexma diff --catalog retail.catalog.xml --model /content/retail --user admin \
      --other-user ann
  vexma diff --catalog retail.catalog.xml --model /content/retail --user admin \
      --view view.analyst --other-view view.clerk
  vexma diff retail.model.xml --other-locale de
  vexma diff --catalog old.catalog.xml --other-catalog new.catalog.xml \
      --model /content/retail --all-users --exit-code)";
    return [diff](Console& console) { return diff->run(console); };
}

} // namespace vex
