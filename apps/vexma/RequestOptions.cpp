#include "apps/vexma/RequestOptions.h"

#include "KRLIDOM_Reader.h"
#include "host/import/xml/FileText.h"

#include <algorithm>
#include <climits>

namespace vex {

namespace {

constexpr char const* defaultProperty = "name";
constexpr char const* allCollections = "*";

bool has(std::string const& text, char character) {
    return text.find(character) != std::string::npos;
}

std::string checkConstraint(std::string const& constraint) {
    if (constraint.find('=') == 0 || !has(constraint, '=')) {
        return "a constraint is written K=V, such as usage=fact";
    }
    return has(constraint, ']') ? "the value of a constraint cannot hold ]" : "";
}

} // namespace

void RequestOptions::addTo(CommandSyntax& command) {
    std::string const group = "Request";
    command.add({.name = "--request",
                 .into = &m_file,
                 .help = "A request document, \"-\" for standard input",
                 .word = "FILE",
                 .group = group});
    m_idOption = &command.add({.name = "--id",
                               .into = &m_id,
                               .help = "Object to start at: an id, or a reference in the default "
                                       "language; leads to no other one, whatever the language",
                               .word = "ID",
                               .group = group});
    OptionSyntax const building[] = {
        {.name = "--start",
         .into = &m_start,
         .help = "Path to start at, such as [Sales].[Orders]",
         .word = "PATH",
         .group = group},
        {.name = "--ref",
         .into = &m_reference,
         .help = "Reference to start at, such as [Sales].[Orders]",
         .word = "REFERENCE",
         .group = group},
        {.name = "--depth",
         .into = &m_depth,
         .help = "Levels to show; 1 is the start alone, 0 everything (default)",
         .word = "N",
         .group = group},
        {.name = "--property",
         .into = &m_properties,
         .help = "A property to show: NAME for every class, or CLASS/@NAME (repeatable; default: "
                 "name)",
         .word = "P",
         .group = group},
        {.name = "--collection",
         .into = &m_collections,
         .help = "A collection to go into: NAME, or CLASS/NAME (repeatable; default: every one); "
                 "with --start, those on the way to it too",
         .word = "C",
         .group = group},
        {.name = "--constraint",
         .into = &m_constraints,
         .help = "Show the start's property K only when its value is V; or CLASS/@K=V "
                 "(repeatable)",
         .word = "K=V",
         .group = group,
         .complaint = &checkConstraint},
        {.name = "--global",
         .into = &m_globals,
         .help = "A setting of the model or locale (repeatable): decimalSeparator, "
                 "listSeparator, defaultLocale, supportedLocales, effectiveLocale",
         .word = "NAME",
         .group = group},
        {.name = "--view",
         .into = &m_view,
         .help = "Answer with this one of the user's views",
         .word = "ID",
         .group = group},
        {.name = "--functions",
         .into = &m_functions,
         .help = "Ask for the package that the model is published in, not for the model",
         .group = group},
    };
    for (OptionSyntax const& option : building) {
        m_building.push_back(&command.add(option));
    }
    m_size.addTo(command);
    m_strict.addTo(command);
}

void RequestOptions::check(SourceOptions const& source) const {
    if (m_file == "-" && source.modelFile == "-") {
        throw UsageException("model and request cannot both come from standard input; name a file "
                             "for one of them");
    }
    if (!m_start.empty() && !m_reference.empty()) {
        throw UsageException("--start and --ref both say where to start; leave one out");
    }
    if (m_idOption->isGiven && (m_id.empty() || !m_start.empty() || !m_reference.empty())) {
        throw UsageException(m_id.empty()
                                 ? "--id is empty; give an id, or a reference like [Sales].[Orders]"
                                 : "--id says where to start; leave --start and --ref out");
    }
    for (OptionSyntax const* const option : m_building) {
        if (!m_file.empty() && option->isGiven) {
            throw UsageException("--request gives a whole request, so " + option->name +
                                 " has nothing to add to; leave one out");
        }
    }
}

std::string RequestOptions::readText() const {
    return m_file.empty() ? "" : readFileText(m_file, m_size.limit());
}

KRLIDOM_OwnedDocument RequestOptions::makeRequest(std::string const& text) const {
    if (m_file.empty()) {
        return build().toDocument();
    }
    KRLIDOM_ReadLimits limits;
    limits.bytes = m_size.bytes;
    return KRLIDOM_Reader::parse(text, fileName(), limits);
}

TreeQuestion RequestOptions::makeQuestion(Model const& model) const {
    for (OptionSyntax const* const option : m_building) {
        std::string const& name = option->name;
        if (option->isGiven && name != "--start" && name != "--depth") {
            throw UsageException("--why tells about the names of all that the user may see, so " +
                                 name + " does not go with it; leave one out");
        }
    }
    if (!m_file.empty()) {
        throw UsageException("--why makes a request of its own; leave --request or --why out");
    }
    TreeQuestion question;
    question.start = I18NString::fromUtf8(m_start);
    question.depth = static_cast<int>(
        std::clamp(m_depth.value_or(0), long{INT_MIN}, long{INT_MAX})); // as requests are read
    question.marker = unusedPropertyOf(model);
    return question;
}

MetadataRequest RequestOptions::build() const {
    MetadataRequest request;
    request.start = I18NString::fromUtf8(m_start);
    request.reference = I18NString::fromUtf8(m_reference);
    request.depth = m_depth.value_or(0);
    request.view = I18NString::fromUtf8(m_view);
    request.functions = m_functions;
    for (std::string const& name : m_globals) {
        request.globals.push_back(I18NString::fromUtf8(name));
    }
    for (std::string const& property : m_properties) {
        request.addProperty(I18NString::fromUtf8(property));
    }
    if (m_properties.empty()) {
        request.addProperty(defaultProperty);
    }
    for (std::string const& collection : m_collections) {
        request.addCollection(I18NString::fromUtf8(collection));
    }
    if (m_collections.empty()) {
        request.addCollection(allCollections);
        if (!m_start.empty()) {
            request.collections.insert(request.collections.end(), std::begin(collectionsOnThePath),
                                       std::end(collectionsOnThePath));
        }
    }
    for (std::string const& constraint : m_constraints) {
        std::size_t const equals = constraint.find('=');
        request.addConstraint(I18NString::fromUtf8(constraint.substr(0, equals)),
                              I18NString::fromUtf8(constraint.substr(equals + 1)));
    }
    return request;
}

} // namespace vex
