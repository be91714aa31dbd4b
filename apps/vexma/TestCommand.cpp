#include "apps/vexma/AccessOfAll.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/ShownText.h"
#include "apps/vexma/TreeAnswer.h"
#include "host/catalogue/Catalogue.h"
#include "host/insight/Explanation.h"
#include "host/insight/ModelChecks.h"
#include "host/insight/RuleStory.h"
#include "host/protocol/JunitPolicyTest.h"
#include "host/store/image/HostException.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace vex {

namespace {

using Results = std::vector<ExpectationResult>;

/// A model that a policy speaks of, by a catalogue.
struct GovernedModel {
    std::string catalogFile;
    std::string path;
};

bool isSameFile(std::string const& a, std::string const& b) {
    std::error_code ignored;
    return std::filesystem::equivalent(a, b, ignored);
}

/// The catalogues that may name a policy: those beside it.
std::vector<std::string> cataloguesBeside(std::string const& policy) {
    std::filesystem::path folder = std::filesystem::path(policy).parent_path();
    bool const isHere = folder.empty();
    std::vector<std::string> found;
    std::error_code ignored;
    for (auto const& entry : std::filesystem::directory_iterator(isHere ? "." : folder, ignored)) {
        if (entry.path().string().ends_with(".catalog.xml")) {
            found.push_back(isHere ? entry.path().filename().string() : entry.path().string());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

/// Somebody who is expected to see something, and what that is.
struct PolicyViewer {
    Workplace workplace;
    ModelTrees trees{};
    SeenModel seen{};
    std::string problem{}; // why it is not known what is seen
};

/// The expectations of one policy about one model.
class PolicyTestRun {
public:
    PolicyTestRun(SourceOptions const& source, Console& console)
        : m_console(console), m_workplace(source, console),
          m_trace(*m_workplace.visit().version->policyTrace()) {}

    /// In the order of the policy. Who is expected to see several things is asked about once.
    Results run() {
        std::vector<PolicyExpectation> const& all = m_trace.policy->expectations;
        std::vector<std::string> order;
        std::map<std::string, std::vector<std::size_t>> byWho;
        for (std::size_t number = 0; number < all.size(); ++number) {
            auto const [at, isNew] = byWho.try_emplace(whoOf(all[number]));
            at->second.push_back(number);
            if (isNew) {
                order.push_back(at->first);
            }
        }
        std::vector<Results> results(all.size());
        for (std::string const& who : order) {
            check(byWho[who], results);
        }
        Results inOrder;
        for (Results& each : results) {
            std::move(each.begin(), each.end(), std::back_inserter(inOrder));
        }
        return inOrder;
    }

private:
    /// Expectations about one user or role.
    void check(std::vector<std::size_t> const& numbers, std::vector<Results>& results) {
        PolicyExpectation const& first = m_trace.policy->expectations[numbers.front()];
        std::shared_ptr<CatalogueUser const> const user = userOf(first);
        if (user == nullptr) {
            fail(numbers, results,
                 first.user.empty() ? "nobody has such a role, and no view is granted to it"
                                    : "the catalogue has no such user",
                 true);
            return;
        }
        PolicyViewer viewer{Workplace(m_workplace, user)};
        see(viewer, whoOf(first));
        if (!viewer.problem.empty()) {
            fail(numbers, results, viewer.problem, false);
            return;
        }
        for (std::size_t const number : numbers) {
            CallEnd const end =
                viewer.workplace.together([&] { results[number] = hold(viewer, number); });
            if (!end.isAnswered()) {
                fail({number}, results, unfinished(end), false);
            }
        }
    }

    Results hold(PolicyViewer& viewer, std::size_t number) const {
        Results results = checkExpectation(*m_trace.policy, m_trace.policy->expectations[number],
                                           m_trace.expected[number], viewer.workplace.model(),
                                           viewer.workplace.locale(), viewer.seen);
        for (ExpectationResult& result : results) {
            explain(viewer, result);
        }
        return results;
    }

    static std::string unfinished(CallEnd const& end) {
        return "the check did not finish: " + end.text;
    }

    void fail(std::vector<std::size_t> const& numbers, std::vector<Results>& results,
              std::string const& problem, bool isFinished) const {
        for (std::size_t const number : numbers) {
            results[number] = failExpectation(*m_trace.policy, m_trace.policy->expectations[number],
                                              problem, isFinished);
        }
    }

    /// Null for a user whom the catalogue lacks, or a role that means nothing there: who
    /// does not exist sees nothing, which would be as expected. A role is somebody who has
    /// that one.
    std::shared_ptr<CatalogueUser const> userOf(PolicyExpectation const& expectation) {
        auto const& catalogue = m_workplace.catalogue();
        if (expectation.user.empty()) {
            return knownRoles().contains(expectation.role)
                       ? std::make_shared<CatalogueUser const>(
                             CatalogueUser{expectation.role, {expectation.role}})
                       : nullptr;
        }
        CatalogueUser const* const user = catalogue->findUser(expectation.user);
        return user == nullptr ? nullptr : std::shared_ptr<CatalogueUser const>(catalogue, user);
    }

    std::set<I18NString> const& knownRoles() {
        if (!m_roles) {
            m_roles = GrantedModel(m_workplace.model()).roles;
            Catalogue const& catalogue = *m_workplace.catalogue();
            for (CatalogueGrant const& grant :
                 catalogue.findModel(m_workplace.modelPath())->grants) {
                m_roles->insert(grant.role);
            }
            for (CatalogueUser const& user : catalogue.users) {
                m_roles->insert(user.roles.begin(), user.roles.end());
            }
        }
        return *m_roles;
    }

    void see(PolicyViewer& viewer, std::string const& who) const {
        CallEnd end;
        CallEnd const whole = viewer.workplace.together([&] { end = look(viewer, who); });
        if (!whole.isAnswered()) {
            end = whole;
        }
        if (!end.isAnswered() && end.isDecided()) { // who may see nothing sees nothing
            Model const& model = viewer.workplace.model();
            viewer.seen =
                SeenModel(model, std::vector<Sight>(model.elementCount(), Sight::Refused));
        } else if (!end.isAnswered()) {
            viewer.problem = unfinished(end);
        }
    }

    /// How the call ended that was not answered, where one was not.
    CallEnd look(PolicyViewer& viewer, std::string const& who) const {
        Progress progress(m_console, "asking for " + who);
        Model const& model = viewer.workplace.model();
        AccessOfAll const access = askForAccessOfAll(viewer.workplace, progress);
        if (!access.end.isAnswered()) {
            return access.end;
        }
        viewer.trees = askForTrees(viewer.workplace);
        if (viewer.trees.refusal) {
            return *viewer.trees.refusal;
        }
        viewer.seen = SeenModel(model, sightOfAll(model, viewer.trees.objects, access.verdicts));
        return access.end;
    }

    void explain(PolicyViewer& viewer, ExpectationResult& result) const {
        if (result.objects.empty()) {
            return;
        }
        Workplace& workplace = viewer.workplace;
        Vex_Handle_Collection objects;
        for (UnexpectedObject const& object : result.objects) {
            objects.push_back(workplace.model().getElement(object.element));
        }
        AccessReasons const reasons = workplace.explain(objects, false);
        if (!reasons.end.isAnswered()) {
            for (UnexpectedObject& object : result.objects) {
                object.why = (reasons.end.isDecided() ? "every request is refused: "
                                                      : "why is not known: ") +
                             reasons.end.text;
            }
            return;
        }
        std::vector<I18NString> const views = availableViews(
            *workplace.catalogue()->findModel(workplace.modelPath()), *workplace.visit().user);
        Explanation const told =
            tellAccess(workplace.model(), workplace.locale(), objects, reasons.explanation,
                       viewer.trees.objects, std::nullopt);
        for (std::size_t number = 0; number < result.objects.size(); ++number) {
            ToldObject const& object = told.objects[number];
            std::string& why = result.objects[number].why;
            why = object.verdict;
            if (!object.accessible && !object.tree.empty()) {
                why += "; in the tree: " + object.tree.front();
            }
            for (std::string const& rule : tellRules(m_trace, workplace.model(), workplace.locale(),
                                                     objects[number], &views)) {
                why += "; " + rule;
            }
        }
    }

    Console& m_console;
    Workplace m_workplace;
    PolicyTrace const& m_trace;
    std::optional<std::set<I18NString>> m_roles;
};

struct TestCommand {
    std::vector<std::string> files;
    std::vector<std::string> catalogFiles;
    std::string format = "text";
    SourceOptions source; // its limits, and the plug-in

    int run(Console& console) const {
        for (std::string const& file : files) {
            if (file.size() > 1 && file.front() == '-') {
                throw UsageException("there is no option " + file + "; see --help");
            }
        }
        if (files.empty()) {
            throw UsageException("give at least one policy, such as retail.policy.yaml");
        }
        Results results;
        for (std::string const& file : files) {
            test(file, results, console);
        }
        std::size_t failed = 0;
        std::size_t unfinished = 0;
        for (ExpectationResult const& result : results) {
            failed += result.fails() ? 1 : 0;
            unfinished += result.isFinished ? 0 : 1;
            if (format == "text" && !result.holds()) {
                write(console.out(), result);
            }
        }
        if (format == "junit") {
            console.out(Spelling::Xml) << toJunit(results);
        }
        if (results.empty()) {
            console.complain("nothing is expected there; write what users see under \"expect:\"");
            return Unverified;
        }
        console.complain("expectations: " + std::to_string(results.size()) +
                         ", failed: " + std::to_string(failed) +
                         (unfinished == 0 ? "" : ", not finished: " + std::to_string(unfinished)));
        return failed != 0 ? Different : unfinished != 0 ? Unfinished : Done;
    }

    void test(std::string const& file, Results& results, Console& console) const {
        // What is wrong with it comes before anything else.
        readPolicy(file, source.sizes.policy());
        std::vector<GovernedModel> const models = governedBy(file);
        for (GovernedModel const& model : models) {
            Results more = PolicyTestRun(sourceOf(model), console).run();
            for (ExpectationResult& result : more) {
                result.who += models.size() > 1 ? " at " + model.path : "";
            }
            results.insert(results.end(), std::make_move_iterator(more.begin()),
                           std::make_move_iterator(more.end()));
        }
    }

    SourceOptions sourceOf(GovernedModel const& model) const {
        SourceOptions made = source;
        made.catalogFile = model.catalogFile;
        made.modelPath = model.path;
        made.forAllUsers = true;
        made.keepPolicyTrace = true;
        return made;
    }

    /// One that cannot be read ends the test: whether it names the policy is not known.
    std::vector<GovernedModel> governedBy(std::string const& policy) const {
        std::vector<GovernedModel> models;
        for (std::string const& file :
             catalogFiles.empty() ? cataloguesBeside(policy) : catalogFiles) {
            auto const catalogue =
                loadCatalogue(file, source.sizes.catalogue(), {.areRead = false});
            for (CatalogueModel const& model : catalogue->models) {
                if (!model.policyFile.empty() && isSameFile(model.policyFile, policy)) {
                    models.push_back({file, model.path.toUtf8()});
                }
            }
        }
        if (models.empty()) {
            throw HostException("no catalogue names the policy " + policy +
                                (catalogFiles.empty()
                                     ? "; looked for *.catalog.xml beside it, --catalog FILE "
                                       "names another one"
                                     : "; write policy=\"...\" at the model that it is for"));
        }
        return models;
    }

    static void write(std::ostream& out, ExpectationResult const& result) {
        out << printable(result.file + ':' + std::to_string(result.place.line) + ':' +
                             std::to_string(result.place.column) + ": " + result.who +
                             ": expected: " + result.expected,
                         false)
            << '\n';
        std::string rest = describeFailure(result);
        while (!rest.empty()) {
            std::size_t const end = std::min(rest.find('\n'), rest.size());
            out << "  " << printable(rest.substr(0, end), false) << '\n';
            rest.erase(0, std::min(end + 1, rest.size()));
        }
    }
};

} // namespace

CommandRun addTestCommand(CommandSyntax& command) {
    auto const test = std::make_shared<TestCommand>();
    command.rest = &test->files;
    command.add({.name = "--catalog",
                 .into = &test->catalogFiles,
                 .help = "A catalogue that names the policies (repeatable; default: *.catalog.xml "
                         "beside each policy)",
                 .word = "FILE"});
    command.add({.name = "--format",
                 .into = &test->format,
                 .help = "How to write the results",
                 .word = "FORMAT",
                 .showsDefault = true,
                 .choices = {"text", "junit"}});
    command.add(
        {.name = "--plugin",
         .into = &test->source.pluginFile,
         .help = "Plug-in library (default: the one beside this program or installed with it)",
         .word = "FILE"});
    test->source.addLimitsTo(command);
    command.epilog =
        R"(The arguments are policies. Holds what they expect against what users and roles see: what
is accessible or shown by a tree. Text has a line for each expectation that fails, with the
objects and the rule that decided below; junit has all. Exit status: 0 all hold, 1 one fails,
5 none fails but a limit or an interrupt came before the end, 6 nothing is expected.

Examples:
  vexma test retail.policy.yaml
  vexma test policies/retail.yaml --catalog retail.catalog.xml --format junit > policy.xml)";
    return [test](Console& console) { return test->run(console); };
}

} // namespace vex
