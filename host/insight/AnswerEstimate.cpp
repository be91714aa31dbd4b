#include "host/insight/AnswerEstimate.h"

#include "VexObject.h"
#include "host/insight/ExpansionGraph.h"
#include "host/insight/RequestedParts.h"
#include "host/store/image/ReferenceText.h"
#include "resources.h"

#include <algorithm>
#include <map>

namespace vex {

namespace {

constexpr long deepestLevel = 1024;

// Measured on the documents that answers are made in.
constexpr std::size_t documentBytes = 160 * 1024; // it grows by up to 128 KiB at a time
constexpr std::size_t elementBytes = 208;
constexpr std::size_t attributeBytes = 300; // its text apart
constexpr std::size_t bytesOfCharacter = 4; // buffers double when they grow
constexpr std::size_t pathBrackets = 3;

struct Size {
    std::size_t elements = 0;
    std::size_t bytes = 0;

    void Add(Size const& more, std::size_t times = 1) {
        elements += more.elements * times;
        bytes += more.bytes * times;
    }
};

Size larger(Size const& a, Size const& b) {
    return {std::max(a.elements, b.elements), std::max(a.bytes, b.bytes)};
}

class AnswerCount {
public:
    using Number = ExpansionGraph::Number;

    AnswerCount(Model const& model, EstimateQuestion const& question)
        : m_question(question), m_depth(question.request.depth), m_graph(model),
          m_own(model.elementCount()) {}

    Size countFrom(Number start, std::size_t pathLength) { return count(start, 1, pathLength); }
    bool isStopped() const { return m_steps > m_question.elementLimit; }
    ExpansionGraph const& graph() const { return m_graph; }

private:
    /// What an element takes itself, but for its paths; worked out when it is
    /// first met.
    struct Own {
        I18NString cls;
        std::size_t nameLength = 0;
        std::size_t bytes = 0;
        std::size_t paths = 0; // attributes that hold a path
        bool isKnown = false;
    };

    Own const& ownOf(Number number) {
        Own& own = m_own[number];
        if (!own.isKnown) {
            VEX_HANDLE const element = m_graph.element(number);
            VexObject(element).GetName(own.cls);
            own.nameLength = length(element, resources::getString(resources::Name));
            for (I18NString const& name : namesFor(element, own.cls)) {
                bool const isPath = name == "_path" || name == "_ref";
                own.paths += isPath ? 1U : 0U;
                own.bytes += attributeBytes + bytesOfCharacter * length(element, name);
            }
            own.isKnown = true;
        }
        return own;
    }

    /// The attributes that the element may get, as any class it may be shown as.
    std::set<I18NString> namesFor(VEX_HANDLE element, I18NString const& cls) {
        std::set<I18NString> names;
        for (I18NString const& shownAs : {cls, tagOf(cls), I18NString("queryItem")}) {
            RequestedProperties const asked = propertiesOf(m_question.request, shownAs);
            names.insert(asked.names.begin(), asked.names.end());
            if (asked.all) {
                names.insert("ID");
                Vex_Handle_Collection properties;
                VexObject(element).Properties(properties, nullptr, nullptr, false);
                for (VEX_HANDLE const property : properties) {
                    I18NString name;
                    VexObject(property).GetName(name);
                    names.insert(name);
                }
            }
        }
        return names;
    }

    std::size_t length(VEX_HANDLE element, I18NString const& property) const {
        I18NString value;
        VexObject(VexObject(element).GetPropertyByName(property, &m_question.locale))
            .GetValue(value, true);
        return static_cast<std::size_t>(value.length());
    }

    static I18NString tagOf(I18NString const& cls) {
        return cls == resources::getString(resources::Namespace)
                   ? resources::getString(resources::Folder)
                   : cls;
    }

    Size sizeOf(Own const& own, std::size_t pathLength) const {
        return {1, elementBytes + own.bytes + own.paths * bytesOfCharacter * pathLength};
    }

    Size count(Number number, long level, std::size_t pathLength) {
        ++m_steps;
        Own const own = ownOf(number);
        pathLength += own.nameLength + pathBrackets;
        if (own.cls == resources::getString(resources::Shortcut)) {
            return countShortcut(number, level, pathLength);
        }
        Size const itself = sizeOf(own, pathLength);
        bool const isLast = m_depth != 0 && level >= m_depth;
        bool const mayMakeRoom = m_question.viewsMayHide && level > 1;
        if (isLast && !mayMakeRoom) {
            return itself;
        }
        Size members = countMembers(number, tagOf(own.cls), false, level, pathLength);
        if (isLast) { // it is shown, or its members are
            return larger(itself, members);
        }
        members.Add(itself);
        return members;
    }

    /// Shown as its target, with its own name; without a depth, not expanded
    /// inside its own expansion.
    Size countShortcut(Number number, long level, std::size_t pathLength) {
        ExpansionGraph::Shortcut const* const shortcut = m_graph.findShortcut(number);
        if (shortcut == nullptr) {
            return {};
        }
        Number const target = shortcut->targets.back();
        Own const shown = ownOf(target);
        // A value may be written again for a property that has none.
        Size size = sizeOf(shown, pathLength);
        Size const own = sizeOf(ownOf(number), pathLength);
        size.bytes += own.bytes + size.bytes;
        bool const isUnderWay = std::find(m_path.begin(), m_path.end(), number) != m_path.end();
        if (m_depth == 0 ? !isUnderWay : level < m_depth) {
            m_path.push_back(number);
            size.Add(countMembers(target, shown.cls, true, level, pathLength));
            m_path.pop_back();
        }
        return size;
    }

    Size countMembers(Number of, I18NString const& cls, bool literally, long level,
                      std::size_t pathLength) {
        Size all;
        for (Number const member : m_graph.children(of)) {
            if (isStopped() || level >= deepestLevel) {
                break; // an answer ends here, too
            }
            std::size_t const times = Times(cls, ownOf(member).cls, literally);
            if (times != 0) {
                all.Add(count(member, level + 1, pathLength), times);
            }
        }
        return all;
    }

    std::size_t Times(I18NString const& cls, I18NString const& collection, bool literally) {
        auto const [known, isNew] = m_times.try_emplace({cls, {collection, literally}}, 0);
        if (isNew) {
            known->second = timesThrough(m_question.request, cls, collection, literally);
        }
        return known->second;
    }

    EstimateQuestion const& m_question;
    long m_depth;
    ExpansionGraph m_graph;
    std::vector<Own> m_own;
    std::vector<Number> m_path; // the shortcuts under way
    std::map<std::pair<I18NString, std::pair<I18NString, bool>>, std::size_t> m_times;
    std::size_t m_steps = 0;
};

bool hasName(Model const& model, VEX_HANDLE element, I18NLocale locale, I18NString const& name) {
    I18NString const& key = resources::getString(resources::Name);
    std::vector<I18NLocale> locales = model.locales();
    locales.push_back(locale);
    locales.push_back(model.defaultLocale());
    return std::any_of(locales.begin(), locales.end(), [&](I18NLocale each) {
        I18NString value;
        VexObject(VexObject(element).GetPropertyByName(key, &each)).GetValue(value, true);
        return value == name;
    });
}

/// Where a path or reference may lead: to what bears its last name in any
/// language, and to the first beside that (the search of a name in a further
/// language ends there).
std::vector<ExpansionGraph::Number> findStarts(Model const& model, ExpansionGraph const& graph,
                                               I18NLocale locale, I18NString const& start) {
    std::vector<std::u16string> names;
    if (!splitReference(start, names) || names.empty()) {
        return {};
    }
    I18NString const last(names.back());
    std::vector<ExpansionGraph::Number> starts;
    for (ExpansionGraph::Number number = 0; number < graph.Size(); ++number) {
        VEX_HANDLE const element = graph.element(number);
        if (!hasName(model, element, locale, last)) {
            continue;
        }
        starts.push_back(number);
        I18NString cls;
        VexObject(element).GetName(cls);
        Vex_Handle_Collection beside;
        VexObject(VexObject(element).GetParent()).childObjects(beside, &cls, nullptr);
        if (beside.size() != 0) {
            starts.push_back(graph.numberOf(beside[0]));
        }
    }
    return starts;
}

std::size_t pathLengthTo(VEX_HANDLE element, I18NLocale locale) {
    std::size_t length = 0;
    for (VEX_HANDLE at = element; at.IsNotNull(); at = VexObject(at).GetParent()) {
        I18NString name;
        VexObject(VexObject(at).GetPropertyByName(resources::getString(resources::Name), &locale))
            .GetValue(name, true);
        length += static_cast<std::size_t>(name.length()) + pathBrackets;
    }
    return length;
}

} // namespace

AnswerEstimate estimateAnswer(Model const& model, EstimateQuestion const& question) {
    MetadataRequest const& request = question.request;
    std::size_t const localeCount = model.locales().size();
    std::size_t const outer = 2 + request.globals.size() * (1 + localeCount);
    if (request.functions) {
        return {outer + 1, documentBytes, false};
    }
    AnswerCount count(model, question);
    std::vector<ExpansionGraph::Number> starts;
    std::vector<I18NString> const asked = startsOf(request);
    for (I18NString const& start : asked) {
        auto const more = findStarts(model, count.graph(), question.locale, start);
        starts.insert(starts.end(), more.begin(), more.end());
    }
    Vex_Handle_Collection namespaces;
    VexObject(model.GetRootObject())
        .getElementsByTagName(resources::getString(resources::Namespace), namespaces);
    if (asked.empty() && namespaces.size() != 0) {
        starts.push_back(count.graph().numberOf(namespaces[0]));
    }
    Size tree;
    for (ExpansionGraph::Number const start : starts) {
        tree = larger(tree, count.countFrom(start, pathLengthTo(count.graph().element(start),
                                                                question.locale)));
    }
    return {outer + tree.elements,
            documentBytes + outer * (elementBytes + attributeBytes) + tree.bytes,
            count.isStopped()};
}

} // namespace vex
