#include "bench/World.h"

#include "VexAction.h"
#include "VexNotification.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/MetadataRequest.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <tuple>

namespace bench {

namespace {

/// A folder for generated models that goes with the program.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vex-bench-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            fail("no folder for generated models can be made in " + pattern);
        }
        m_path = pattern;
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string file(std::string const& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

KRLIDOM_OwnedDocument makeRequest(Question const& question) {
    vex::MetadataRequest request{.start = I18NString::fromUtf8(question.start),
                                 .reference = I18NString::fromUtf8(question.reference),
                                 .depth = question.depth};
    for (std::string const& property : question.properties) {
        request.addProperty(I18NString::fromUtf8(property));
    }
    for (char const* const collection :
         {"folder", "querySubject", "queryItemFolder", "queryItem", "filter", "calculation"}) {
        request.addCollection(collection);
    }
    return request.toDocument();
}

World makeWorld(ModelPlan const& plan, ScratchFolder const& folder, std::size_t number) {
    World world;
    world.generated = generateModel(plan);
    world.file = folder.file("model" + std::to_string(number) + ".xml");
    world.fileBytes = world.generated.document.size();
    std::ofstream(world.file, std::ios::binary) << world.generated.document;
    std::string().swap(world.generated.document);
    world.model = vex::loadModel(world.file);
    vex::Diagnostics found;
    world.catalogue =
        vex::readCatalogueText(generateCatalogue(world.file), "catalogue", ".", found);
    return world;
}

} // namespace

std::unique_ptr<vex::HostSession> World::openSession(std::string const& user) const {
    I18NLocale const locale("en");
    return user.empty()
               ? vex::Host::openSession(model, locale)
               : std::make_unique<vex::HostSession>(
                     model, locale, catalogue, catalogue->findUser(I18NString::fromUtf8(user)));
}

World const& worldOf(ModelPlan const& plan) {
    static ScratchFolder const folder;
    static std::map<std::tuple<std::size_t, std::uint64_t, double, RoleViews>, World> worlds;
    static std::mutex mutex;
    std::lock_guard const lock(mutex);
    auto const key = std::tuple(plan.objects, plan.seed, plan.shortcutsPerSubject, plan.roleViews);
    auto found = worlds.find(key);
    if (found == worlds.end()) {
        found = worlds.emplace(key, makeWorld(plan, folder, worlds.size())).first;
    }
    return found->second;
}

vex::PluginProxy& plugin() {
    static vex::PluginProxy proxy(vex::findPluginFile());
    static std::once_flag once;
    std::call_once(once, [] { proxy.Initialize(); });
    return proxy;
}

Asker::Asker(World const& world, Question const& question)
    : m_session(world.openSession(question.user)) {
    plugin().Notify(*m_session, VexNotification::SessionOpened);
    m_in.AddParam(m_values.Long(0));
    m_in.AddParam(m_values.String(question.user.empty() ? "generated" : ModelPath));
    m_in.AddParam(m_values.Node(makeRequest(question)));
}

Asker::~Asker() {
    plugin().Notify(*m_session, VexNotification::SessionClosed);
}

vex::ActionOutcome Asker::ask() {
    vex::ActionOutcome outcome =
        vex::callAction(plugin(), *m_session, VexVariant(VexAction::MetadataRequest), m_in, {});
    if (outcome.end != vex::ActionOutcome::End::Returned) {
        fail("the plug-in did not answer: " + outcome.text);
    }
    return outcome;
}

void fail(std::string const& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::exit(EXIT_FAILURE);
}

} // namespace bench
