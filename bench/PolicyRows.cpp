#include "bench/Rows.h"
#include "host/catalogue/PolicyViews.h"
#include "host/import/xml/ModelLoader.h"

#include <string>

#include <benchmark/benchmark.h>

namespace bench {

namespace {

/// Ten views of ten rules each: a part of the model by its place, what is left out by
/// properties, classes and what names it.
std::string policyOf(GeneratedModel const& generated) {
    std::string text = "views:\n";
    for (int view = 0; view < 10; ++view) {
        text += "  by.rule." + std::to_string(view) + ":\n    include:\n";
        text += "      - \"" + generated.inFolder.referenceText() + "\"\n";
        text += "      - \"**@usage=identifier\"\n";
        for (int area = 0; area < 4; ++area) {
            text += "      - \"[" + generated.inFolder.path[static_cast<std::size_t>(area % 3)] +
                    "]/**\"\n";
        }
        text += "    except: [\"**@usage=fact\", \"**@tag=pii\", \"**@datatype=date\", "
                "\"calculation:\"]\n";
        text += view % 2 == 0 ? "    spread: true\n" : "";
    }
    return text;
}

void load(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    auto const policy = vex::readPolicyText(policyOf(world.generated), "bench.policy.yaml");
    for ([[maybe_unused]] auto const& _ : state) {
        vex::PolicyViews views(*policy);
        vex::LoadOptions options;
        options.addition = &views;
        benchmark::DoNotOptimize(vex::loadModel(world.file, options));
    }
}

} // namespace

void registerPolicies(Sizes const& sizes) {
    for (std::size_t const objects : {sizes.medium, sizes.large}) {
        benchmark::RegisterBenchmark(rowName("load/policy", objects).c_str(), load, objects)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace bench
