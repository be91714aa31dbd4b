#include "KRLException.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/InputSizes.h"
#include "apps/vexma/Progress.h"
#include "apps/vexma/ShownText.h"
#include "apps/vexma/SourceOptions.h"
#include "host/import/draft/WrittenFiles.h"
#include "host/import/xml/ModelDocument.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/ImageFile.h"

#include <memory>

namespace vex {

namespace {

/// Both ways between a model document and its image.
struct CompileCommand {
    std::string modelFile;
    std::string output;
    bool keepsPositions = false;
    InputSizes sizes;

    std::shared_ptr<Model const> readModel(Console& console) const {
        LoadOptions load;
        load.input = sizes.model();
        load.keepPositions = keepsPositions;
        Progress progress(console);
        load.progress = [&](std::size_t done, std::size_t total) { progress.report(done, total); };
        return modelFile == "-"
                   ? loadModelText(readFileText("-", load.input), "standard input", load)
                   : loadModel(modelFile, load);
    }

    int compile(Console& console) const {
        if (output == "-") {
            throw UsageException("an image is opened as a file; give it a name");
        }
        writeImage(*readModel(console), output);
        return tell(console);
    }

    int decompile(Console& console) const {
        std::string const document = modelDocumentOf(*readModel(console));
        if (output == "-") {
            console.out(Spelling::Drawn) << document;
            return Done;
        }
        writeFilesTogether({{output, document}});
        return tell(console);
    }

    int tell(Console& console) const {
        console.out() << "wrote " << printable(output, false) << '\n';
        return Done;
    }

    void addTo(CommandSyntax& command, char const* source, char const* target) {
        command.add({.name = "MODEL", .into = &modelFile, .help = source, .isRequired = true});
        command.add({.name = "-o,--output",
                     .into = &output,
                     .help = target,
                     .word = "FILE",
                     .isRequired = output.empty()});
        sizes.addModelTo(command);
    }
};

} // namespace

CommandRun addCompileCommand(CommandSyntax& command) {
    auto const compile = std::make_shared<CompileCommand>();
    compile->addTo(command, "The model document; \"-\" for standard input", "The image to write");
    command.add({.name = "--positions",
                 .into = &compile->keepsPositions,
                 .help = "Keep where each object stands in the document, for messages about it"});
    command.epilog =
        R"(An image is the model as it lies in memory: every command and every catalogue takes it in
place of the document, and has it at once. It says the same, and holds all that the document says;
"vexma decompile" writes that again. Replace an image, do not write to one that is in use. Exit
status: 3 when the document cannot be read or the image cannot be written; then nothing is.

Examples:
  vexma compile shop.model.xml -o shop.vexm
  vexma tree shop.vexm)";
    return [compile](Console& console) { return compile->compile(console); };
}

CommandRun addDecompileCommand(CommandSyntax& command) {
    auto const decompile = std::make_shared<CompileCommand>();
    decompile->output = "-";
    decompile->addTo(command, "The image; a document is written in its canonical form",
                     "The document to write (default: standard output)");
    command.epilog =
        R"(Writes the model document of an image: the same objects, ids, properties, texts and
languages in the same order. Exit status: 3 when the image cannot be read or the document cannot
be written.

Examples:
  vexma decompile shop.vexm -o shop.model.xml
  vexma decompile shop.vexm | less)";
    return [decompile](Console& console) { return decompile->decompile(console); };
}

} // namespace vex
