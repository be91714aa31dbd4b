// Writes a generated model and a catalogue for it; prints the start path of a query subject in
// its middle.
//
//   vex_generate [--objects N] [--seed N] [--roles none|plain|default]
//                --model FILE --catalog FILE

#include "bench/GeneratedModel.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>

namespace {

struct Arguments {
    bench::ModelPlan plan;
    std::string modelFile;
    std::string catalogFile;
};

bool read(int count, char** words, Arguments& arguments) {
    std::map<std::string_view, bench::RoleViews> const roleViews{
        {"none", bench::RoleViews::None},
        {"plain", bench::RoleViews::WithoutDefault},
        {"default", bench::RoleViews::WithDefault},
    };
    for (int index = 1; index + 1 < count; index += 2) {
        std::string_view const option = words[index];
        char const* const value = words[index + 1];
        if (option == "--objects") {
            arguments.plan.objects = std::strtoull(value, nullptr, 10);
        } else if (option == "--seed") {
            arguments.plan.seed = std::strtoull(value, nullptr, 10);
        } else if (option == "--model") {
            arguments.modelFile = value;
        } else if (option == "--catalog") {
            arguments.catalogFile = value;
        } else if (option == "--roles" && roleViews.contains(value)) {
            arguments.plan.roleViews = roleViews.at(value);
        } else {
            return false;
        }
    }
    return count % 2 == 1 && !arguments.modelFile.empty() && !arguments.catalogFile.empty();
}

bool write(std::string const& file, std::string const& text) {
    std::ofstream out(file, std::ios::binary);
    out << text;
    out.close();
    if (!out) {
        std::perror(file.c_str());
    }
    return static_cast<bool>(out);
}

} // namespace

int main(int count, char** words) {
    Arguments arguments;
    if (!read(count, words, arguments)) {
        std::fputs("usage: vex_generate [--objects N] [--seed N] [--roles none|plain|default] "
                   "--model FILE --catalog FILE\n",
                   stderr);
        return 2;
    }
    std::string const model = std::filesystem::absolute(arguments.modelFile).string();
    bench::GeneratedModel const generated = bench::generateModel(arguments.plan);
    if (!write(arguments.modelFile, generated.document) ||
        !write(arguments.catalogFile, bench::generateCatalogue(model))) {
        return EXIT_FAILURE;
    }
    std::puts(generated.inFolder.pathText().c_str());
    return EXIT_SUCCESS;
}
