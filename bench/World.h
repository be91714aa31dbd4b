#pragma once

#include "bench/GeneratedModel.h"
#include "host/service/ActionCall.h"
#include "host/service/Host.h"

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
    std::shared_ptr<vex::Catalogue const> catalogue;

    /// A session of one of the catalogue's users; "" gives one that nobody
    /// restricts.
    std::unique_ptr<vex::HostSession> openSession(std::string const& user) const;
};

/// Made when first asked for and kept.
World const& worldOf(ModelPlan const& plan);

/// The plug-in, loaded once.
vex::PluginProxy& plugin();

/// What a request asks for.
struct Question {
    std::string user{}; // see World::openSession
    std::string start{};
    std::string reference{}; // in place of a start
    int depth = 0;
    std::vector<std::string> properties{"name", "_path", "_ref"};
};

/// A session with a request that can be made again and again.
class Asker {
public:
    Asker(World const& world, Question const& question);
    ~Asker();

    /// Fails the program when the plug-in does not answer.
    vex::ActionOutcome ask();

private:
    std::unique_ptr<vex::HostSession> m_session;
    vex::ActionValues m_values;
    VexParams m_in;
};

[[noreturn]] void fail(std::string const& text);

} // namespace bench
