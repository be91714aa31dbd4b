#include "bench/World.h"

#include "host/import/xml/ModelLoader.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <tuple>

namespace bench {

namespace {

constexpr char const* pathAlone = "generated"; // outside of what catalogues hold

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

void openModel(World& world) {
    world.model = vex::loadModel(world.file);
    vex::Diagnostics found;
    world.catalogued = std::make_shared<vex::MemoryContent>(
        vex::readCatalogueText(generateCatalogue(world.file), "catalogue", ".", found));
    world.catalogued->setModel(ModelPath, world.model);
    world.alone = std::make_shared<vex::MemoryContent>();
    world.alone->setModel(pathAlone, world.model);
}

World makeWorld(ModelPlan const& plan, ScratchFolder const& folder, std::size_t number) {
    World world;
    world.generated = generateModel(plan);
    world.file = folder.file("model" + std::to_string(number) + ".xml");
    world.fileBytes = world.generated.document.size();
    std::ofstream(world.file, std::ios::binary) << world.generated.document;
    std::string().swap(world.generated.document);
    openModel(world);
    return world;
}

} // namespace

vex::Visit World::visit(std::string const& user) const {
    I18NLocale const locale("en");
    return user.empty()
               ? vex::openVisit(*alone, {pathAlone, "", locale})
               : vex::openVisit(*catalogued, {ModelPath, I18NString::fromUtf8(user), locale});
}

World const& worldOf(ModelPlan const& plan) {
    static ScratchFolder const folder;
    static std::map<std::tuple<std::size_t, std::uint64_t, double, RoleViews, bool>, World> worlds;
    static std::mutex mutex;
    std::lock_guard const lock(mutex);
    auto const key = std::tuple(plan.objects, plan.seed, plan.shortcutsPerSubject, plan.roleViews,
                                plan.setForEachId);
    auto found = worlds.find(key);
    if (found == worlds.end()) {
        found = worlds.emplace(key, makeWorld(plan, folder, worlds.size())).first;
    }
    return found->second;
}

World reloaded(World const& world) {
    World fresh;
    fresh.generated = world.generated;
    fresh.file = world.file;
    fresh.fileBytes = world.fileBytes;
    openModel(fresh);
    return fresh;
}

vex::Service& service() {
    static vex::Service serving(vex::loadPlugin());
    return serving;
}

Asker::Asker(World const& world, Question const& question)
    : m_visit(world.visit(question.user)), m_request(makeRequest(question)) {}

vex::MetadataAnswer Asker::ask() {
    vex::MetadataAnswer answer = service().metadata(m_visit, m_request.document(), {});
    if (!answer.end.isAnswered()) {
        fail("the plug-in did not answer: " + answer.end.text);
    }
    return answer;
}

void fail(std::string const& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::exit(EXIT_FAILURE);
}

} // namespace bench
