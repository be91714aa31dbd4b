#pragma once

#include "bench/GeneratedModel.h"
#include "host/content/MemoryContent.h"
#include "host/service/Service.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// The models to measure with, largest first choice of each row.
struct Sizes {
    std::size_t small = 1'000;
    std::size_t medium = 100'000;
    std::size_t large = 1'000'000;
    std::size_t includedIds = 100'000; // in the view that is read
    std::vector<std::size_t> shortcuts{100, 1'000, 10'000};
};

/// A generated model, loaded, with its catalogue.
struct World {
    GeneratedModel generated; // without the document, which is in the file
    std::string file;
    std::size_t fileBytes = 0;
    std::shared_ptr<vex::Model const> model;
    std::shared_ptr<vex::MemoryContent> catalogued;
    std::shared_ptr<vex::MemoryContent> alone; // the same model, where nobody is restricted

    /// Of one of the catalogue's users; "" gives one that nobody restricts.
    vex::Visit visit(std::string const& user) const;
};

/// Made when first asked for and kept.
World const& worldOf(ModelPlan const& plan);

/// The same world with its model loaded anew: nobody has asked it for anything.
World reloaded(World const& world);

/// With the plug-in, loaded once.
vex::Service& service();

/// What a request asks for.
struct Question {
    std::string user{}; // see World::visit
    std::string start{};
    std::string reference{}; // in place of a start
    int depth = 0;
    std::vector<std::string> properties{"name", "_path", "_ref"};
};

/// A request that can be made again and again.
class Asker {
public:
    Asker(World const& world, Question const& question);

    /// Fails the program when the plug-in does not answer.
    vex::MetadataAnswer ask();

private:
    vex::Visit m_visit;
    KRLIDOM_OwnedDocument m_request;
};

[[noreturn]] void fail(std::string const& text);

} // namespace bench
