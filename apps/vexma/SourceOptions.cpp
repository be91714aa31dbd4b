#include "apps/vexma/SourceOptions.h"

namespace vex {

void SourceOptions::addTo(CommandSyntax& command) {
    std::string const source = "Source";
    command.add({.name = "--catalog",
                 .into = &catalogFile,
                 .help = "Catalogue of models and users",
                 .word = "FILE",
                 .group = source});
    command.add({.name = "--model",
                 .into = &modelPath,
                 .help = "Path of the model in the catalogue",
                 .word = "PATH",
                 .group = source});
    command.add({.name = "--user",
                 .into = &user,
                 .help = "User of the catalogue",
                 .word = "NAME",
                 .group = source});
    command.add({.name = "--locale",
                 .into = &locale,
                 .help = "Language to answer in, such as de or de_AT (default: the model's)",
                 .word = "L",
                 .group = source});
    command.add(
        {.name = "--plugin",
         .into = &pluginFile,
         .help = "Plug-in library (default: the one beside this program or installed with it)",
         .word = "FILE",
         .group = source});
    command.add({.name = "--verbose",
                 .into = &verbose,
                 .help = "Tell the number and the function of a failure too, and what stood in "
                         "the way of the cache",
                 .group = source});
    command.add({.name = "--trace",
                 .into = &trace,
                 .help = "Show the plug-in's trace on standard error",
                 .group = source});

    addCacheTo(command);
    addLimitsTo(command);
}

void SourceOptions::addCacheTo(CommandSyntax& command) {
    command.add({.name = "--no-cache",
                 .into = &noCache,
                 .help = "Read a large model document again, and keep no image of it",
                 .group = "Source"});
}

void SourceOptions::addLimitsTo(CommandSyntax& command) {
    std::string const limits = "Limits";
    command.add({.name = "--max-elements",
                 .into = &response.elements,
                 .help = "Elements that an answer may have, its two outer ones counted",
                 .word = "N",
                 .group = limits,
                 .showsDefault = true,
                 .least = 2});
    command.add({.name = "--max-bytes",
                 .into = &response.bytes,
                 .help = "Memory that an answer may take, in bytes; 0 for any",
                 .word = "N",
                 .group = limits,
                 .showsDefault = true});
    command.add({.name = "--deadline",
                 .into = &deadlineSeconds,
                 .help = "Seconds that one call may take, with what belongs to it (default: any)",
                 .word = "SECONDS",
                 .group = limits,
                 .isPositive = true});
    sizes.addTo(command);
}

void SourceOptions::addModelFileTo(CommandSyntax& command) {
    command.add({.name = "MODEL.xml",
                 .into = &modelFile,
                 .help = "A model file alone, \"-\" for standard input: nobody is restricted"});
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
    if (fromCatalogue && forAllUsers && modelPath.empty()) {
        throw UsageException("--catalog needs --model PATH too");
    }
    if (fromCatalogue && (modelPath.empty() || (user.empty() && !forAllUsers))) {
        throw UsageException("--catalog needs --model PATH and --user NAME too");
    }
    if (!fromCatalogue && (!modelPath.empty() || !user.empty())) {
        throw UsageException("--model and --user need --catalog CATALOG.xml; a model file alone "
                             "has no users");
    }
}

void RequestSize::addTo(CommandSyntax& command) {
    command.add({.name = "--max-request",
                 .into = &bytes,
                 .help = "Bytes that a request document may have",
                 .word = "N",
                 .group = "Limits",
                 .showsDefault = true,
                 .isPositive = true});
}

} // namespace vex
