#include "tests/naive/Generator.h"

#include "tests/naive/ModelGenerator.h"
#include "tests/naive/RequestGenerator.h"

#include <algorithm>

namespace naive {

namespace {

Text requestPath(Random& random, bool catalogued, bool mayStray) {
    static Texts const contentPaths = {u"/content/m",       u"path:/content/m", u"/content/other",
                                       u"/content/unknown", u"elsewhere",       u"a path:"};
    if (!mayStray) {
        return contentPaths[catalogued ? random.weighted({80, 8, 0, 0, 10, 2}) : 4];
    }
    return contentPaths[catalogued ? random.weighted({74, 8, 4, 1, 11, 2})
                                   : random.weighted({2, 1, 0, 1, 90, 6})];
}

void spoil(Random& random, std::vector<Value>& in) {
    std::size_t const index = random.below(in.size());
    switch (random.weighted({1, 1, 1, 1, 1})) {
    case 0:
        in.resize(index);
        break;
    case 1:
        in[index] = Value::empty();
        break;
    case 2:
        in[index] = Value::ofLong(7);
        break;
    case 3:
        in[index] = Value::ofString(u"text");
        break;
    default:
        in[index] = Value::ofNode("<Metadata><Property name=\"*/@name\"/></Metadata>");
    }
}

SessionStep step(Random& random, RequestGenerator& requests, bool catalogued, bool metadata,
                 bool first) {
    SessionStep result;
    if (random.chance(3)) {
        result.notification = random.between(0, 3);
        return result;
    }
    if (random.chance(1)) {
        result.action = random.chance(50) ? Value::ofLong(31001) : Value::ofString(u"31000");
        return result;
    }
    // What comes first decides what the whole session can do, so it is seldom wrong.
    bool const mayStray = !first || random.chance(10);
    bool const asksMetadata = mayStray && random.chance(3) ? !metadata : metadata;
    result.action = Value::ofLong(asksMetadata ? 31000 : 32000);
    result.in = {Value::ofLong(random.between(0, 2)),
                 Value::ofString(requestPath(random, catalogued, mayStray))};
    if (asksMetadata) {
        result.in.push_back(Value::ofNode(requests.request()));
    } else {
        result.in.push_back(Value::ofObject(requests.object()));
        result.in.push_back(Value::ofLong(random.between(0, 2)));
    }
    if (random.chance(2)) {
        spoil(random, result.in);
    }
    return result;
}

std::string describedValue(Value const& value) {
    switch (value.type) {
    case Value::Type::Empty:
        return "empty";
    case Value::Type::Long:
        return "long " + std::to_string(value.number);
    case Value::Type::String:
        return "string " + toUtf8(value.text);
    case Value::Type::Object:
        return "object " + toUtf8(value.text);
    case Value::Type::Node:
        break;
    }
    return "node " + value.xml;
}

} // namespace

GeneratedWorld generateWorld(Random& random, CaseSize size) {
    GeneratedWorld world;
    world.model = generateModel(random, size.objects);
    if (random.chance(60)) {
        static Texts const users = {u"ann", u"bob", u"cleo", u"dan", u"eve"};
        world.catalogue = generateCatalogue(random);
        world.modelPath = u"/content/m";
        world.user = users[random.weighted({40, 28, 28, 1, 1})];
    }
    static Texts const locales = {u"", u"en", u"de", u"de_AT", u"ja", u"fr"};
    world.locale = locales[random.weighted({44, 28, 12, 6, 6, 4})];
    world.plainModel = std::make_shared<PlainModel const>(world.model);
    return world;
}

std::vector<SessionStep> generateSession(Random& random, GeneratedWorld const& world,
                                         CaseSize size) {
    PlainModel const& model = *world.plainModel;
    RequestGenerator requests(random, model, model.negotiatedLocale(world.locale));
    bool const catalogued = !world.catalogue.empty();
    bool const metadata = random.chance(88);
    int const count = metadata ? random.between(1, size.requests)
                               : random.between(std::min(3, size.checks), size.checks);
    std::vector<SessionStep> steps;
    for (int i = 0; i < count; ++i) {
        steps.push_back(step(random, requests, catalogued, metadata, i == 0));
    }
    return steps;
}

GeneratedCase generateCase(std::uint64_t seed) {
    Random random(seed);
    GeneratedCase generated;
    generated.world = generateWorld(random, {});
    generated.steps = generateSession(random, generated.world, {});
    return generated;
}

std::string described(GeneratedWorld const& world, std::vector<SessionStep> const& steps) {
    std::string text = "model " + world.model + "\ncatalogue " + world.catalogue;
    text += "\npath " + toUtf8(world.modelPath) + "\nuser " + toUtf8(world.user);
    text += "\nlocale " + toUtf8(world.locale) + "\n";
    for (SessionStep const& one : steps) {
        if (one.notification) {
            text += "notify " + std::to_string(*one.notification) + "\n";
            continue;
        }
        text += "action " + describedValue(one.action) + "\n";
        for (Value const& value : one.in) {
            text += "  " + describedValue(value) + "\n";
        }
    }
    return text;
}

} // namespace naive
