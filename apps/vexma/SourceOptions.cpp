#include "apps/vexma/SourceOptions.h"

#include <CLI/CLI.hpp>

namespace vex {

void SourceOptions::addTo(CLI::App& command) {
    std::string const source = "Source";
    command.add_option("--catalog", catalogFile, "Catalogue of models and users")
        ->type_name("FILE")
        ->group(source);
    command.add_option("--model", modelPath, "Path of the model in the catalogue")
        ->type_name("PATH")
        ->group(source);
    command.add_option("--user", user, "User of the catalogue")->type_name("NAME")->group(source);
    command
        .add_option("--locale", locale,
                    "Language to answer in, such as de or de_AT (default: the model's)")
        ->type_name("L")
        ->group(source);
    command
        .add_option("--plugin", pluginFile,
                    "Plug-in library (default: the one beside this program or installed with it)")
        ->type_name("FILE")
        ->group(source);

    std::string const limits = "Limits";
    command
        .add_option("--max-elements", response.elements,
                    "Elements that an answer may have, its two outer ones counted")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(std::size_t{2}, std::numeric_limits<std::size_t>::max(), "N"))
        ->group(limits);
    command
        .add_option("--max-bytes", response.bytes,
                    "Memory that an answer may take, in bytes; 0 for any")
        ->type_name("N")
        ->capture_default_str()
        ->group(limits);
    command
        .add_option("--deadline", deadlineSeconds, "Seconds that one call may take (default: any)")
        ->type_name("SECONDS")
        ->check(CLI::PositiveNumber)
        ->group(limits);
}

void SourceOptions::addModelFileTo(CLI::App& command) {
    command.add_option("MODEL.xml", modelFile,
                       "A model file alone, \"-\" for standard input: nobody is restricted");
}

void SourceOptions::check() const {
    bool const fromCatalogue = !catalogFile.empty();
    if (!fromCatalogue && modelFile.empty()) {
        throw UsageException("nothing to read from; give a MODEL.xml, or --catalog CATALOG.xml "
                             "--model PATH --user NAME");
    }
    if (fromCatalogue && !modelFile.empty()) {
        throw UsageException("both the model file " + modelFile +
                             " and a catalogue are given; leave one out");
    }
    if (fromCatalogue && (modelPath.empty() || user.empty())) {
        throw UsageException("--catalog needs --model PATH and --user NAME too");
    }
    if (!fromCatalogue && (!modelPath.empty() || !user.empty())) {
        throw UsageException("--model and --user need --catalog CATALOG.xml; a model file alone "
                             "has no users");
    }
}

void RequestSize::addTo(CLI::App& command) {
    command.add_option("--max-request", bytes, "Bytes that a request document may have")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::PositiveNumber)
        ->group("Limits");
}

} // namespace vex
