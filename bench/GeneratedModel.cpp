#include "bench/GeneratedModel.h"

#include "bench/Words.h"

#include <algorithm>
#include <numeric>

namespace bench {

namespace {

constexpr std::size_t namespacesPerArea = 10;
constexpr std::size_t subjectsPerNamespace = 50;
constexpr std::size_t subjectsPerFolder = 10;
constexpr std::size_t foldersPerNamespace = 4;
constexpr std::size_t itemsPerSubject = 20;
constexpr std::size_t itemsInFolder = 7; // the last ones of a query subject
constexpr std::size_t subjectsPerFilter = 4;
constexpr std::size_t subjectsPerCalculation = 4;

/// A sequence that is the same under every compiler and library.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t next() {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t value = m_state;
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() % bound); }

private:
    std::uint64_t m_state;
};

struct Name {
    std::string en;
    std::string de;
};

Name nameOf(Word const& word) {
    return {word.en, word.de};
}

Name numbered(Word const& word, std::size_t number) {
    return {word.en + (' ' + std::to_string(number)), word.de + (' ' + std::to_string(number))};
}

std::string bracketed(std::vector<std::string> const& names) {
    std::string text;
    for (std::string const& name : names) {
        text += (text.empty() ? "[" : ".[") + name + ']';
    }
    return text;
}

class Writer {
public:
    explicit Writer(ModelPlan const& plan) : m_plan(plan), m_random(plan.seed) {}

    GeneratedModel write() {
        line("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        line("<model id=\"generated\" defaultLocale=\"en\">");
        ++m_indent;
        line("<locales><locale>en</locale><locale>de</locale></locales>");
        if (open("namespace", 'n', {"Model", "Modell"})) {
            for (std::size_t area = 1; hasRoom(); ++area) {
                writeArea(area);
            }
            close("namespace");
        }
        writeViews();
        --m_indent;
        line("</model>");
        m_result.objects = m_letters.size();
        m_result.inFolder = m_middle[m_middle.size() / 2].inFolder;
        m_result.direct = m_middle[m_middle.size() / 2].direct;
        m_result.last = m_middle.back().inFolder;
        return std::move(m_result);
    }

private:
    struct Landmarks {
        SubjectPlace inFolder;
        SubjectPlace direct;
    };

    bool hasRoom() const { return m_letters.size() < m_plan.objects; }

    void line(std::string_view text) {
        m_result.document.append(2 * m_indent, ' ');
        m_result.document += text;
        m_result.document += '\n';
    }

    /// Begins an object, unless the model has as many as planned.
    bool open(std::string const& tag, char letter, Name const& name,
              std::string const& attributes = "") {
        if (!hasRoom()) {
            return false;
        }
        m_letters += letter;
        line('<' + tag + " id=\"" + idOf(m_letters.size() - 1) + '"' + attributes + '>');
        ++m_indent;
        line("<property name=\"name\" locale=\"en\">" + name.en + "</property>");
        line("<property name=\"name\" locale=\"de\">" + name.de + "</property>");
        m_path.push_back(name.en);
        return true;
    }
    void close(std::string const& tag) {
        m_path.pop_back();
        --m_indent;
        line("</" + tag + '>');
    }
    bool leaf(std::string const& tag, char letter, Name const& name,
              std::string const& attributes = "") {
        if (!open(tag, letter, name, attributes)) {
            return false;
        }
        close(tag);
        return true;
    }

    std::string idOf(std::size_t object) const {
        return m_letters[object] + std::to_string(object + 1);
    }

    void writeArea(std::size_t number) {
        if (!open("folder", 'f', numbered(AreaWords[number % AreaWords.size()], number))) {
            return;
        }
        for (std::size_t i = 0; i < namespacesPerArea && hasRoom(); ++i) {
            writeNamespace();
        }
        close("folder");
    }

    void writeNamespace() {
        ++m_namespaces;
        if (!open("namespace", 'n',
                  numbered(AreaWords[m_random.below(AreaWords.size())], m_namespaces))) {
            return;
        }
        std::vector<std::size_t> names(OwnerWords.size() * TopicWords.size());
        std::iota(names.begin(), names.end(), std::size_t{0});
        shuffle(names);
        Landmarks landmarks;
        std::size_t subject = 0;
        for (std::size_t folder = 0; folder < foldersPerNamespace; ++folder) {
            if (!open("folder", 'f', nameOf(FolderWords[folder]))) {
                break;
            }
            for (std::size_t i = 0; i < subjectsPerFolder; ++i) {
                writeSubject(names[subject++], landmarks.inFolder);
            }
            close("folder");
        }
        while (subject < subjectsPerNamespace) {
            writeSubject(names[subject++], landmarks.direct);
        }
        writeShortcuts(landmarks);
        close("namespace");
        if (!landmarks.direct.item.empty()) {
            m_middle.push_back(std::move(landmarks));
        }
    }

    void writeSubject(std::size_t nameNumber, SubjectPlace& place) {
        Word const& owner = OwnerWords[nameNumber / TopicWords.size()];
        Word const& topic = TopicWords[nameNumber % TopicWords.size()];
        Name const name{std::string(owner.en) + ' ' + topic.en, std::string(owner.de) + topic.de};
        if (!open("querySubject", 'q', name,
                  " screenTip=\"One row for each of the " + name.en + "\"")) {
            return;
        }
        std::size_t const number = m_result.subjects++;
        std::vector<std::size_t> words(ItemWords.size());
        std::iota(words.begin(), words.end(), std::size_t{0});
        shuffle(words);
        std::size_t item = 0;
        while (item < itemsPerSubject - itemsInFolder && writeItem(words[item])) {
            ++item;
        }
        if (item > 1) {
            place = {m_path, ItemWords[words[1]].en, number};
        }
        if (open("queryItemFolder", 'd',
                 nameOf(ItemFolderWords[m_random.below(ItemFolderWords.size())]))) {
            while (item < itemsPerSubject && writeItem(words[item])) {
                ++item;
            }
            close("queryItemFolder");
        }
        if (number % subjectsPerFilter == 0) {
            leaf("filter", 'x', nameOf(FilterWords[m_random.below(FilterWords.size())]),
                 " expression=\"[Status] = 'open'\"");
        }
        if (number % subjectsPerCalculation == 1) {
            leaf("calculation", 'c',
                 nameOf(CalculationWords[m_random.below(CalculationWords.size())]),
                 " expression=\"[Revenue] / [Quantity]\"");
        }
        close("querySubject");
    }

    bool writeItem(std::size_t word) {
        static constexpr char const* kinds[] = {
            " datatype=\"int32\" usage=\"fact\"", " datatype=\"decimal\" usage=\"fact\"",
            " datatype=\"characterLength16\" usage=\"attribute\"",
            " datatype=\"date\" usage=\"attribute\"", " datatype=\"int32\" usage=\"identifier\""};
        return leaf("queryItem", 'i', nameOf(ItemWords[word]), kinds[word % std::size(kinds)]);
    }

    /// Catches up with the number of shortcuts that the query subjects so far
    /// call for. Each has a name of its own and points into this namespace.
    void writeShortcuts(Landmarks const& landmarks) {
        SubjectPlace const& target =
            landmarks.direct.item.empty() ? landmarks.inFolder : landmarks.direct;
        if (target.item.empty()) {
            return;
        }
        auto const wanted = static_cast<std::size_t>(static_cast<double>(m_result.subjects) *
                                                     m_plan.shortcutsPerSubject);
        std::string const& subject = target.path.back();
        while (m_result.shortcuts < wanted) {
            std::string const number = std::to_string(m_result.shortcuts + 1);
            if (!open("shortcut", 's', {subject + ' ' + number, subject + " Nr. " + number},
                      " refobj=\"[" + m_path.back() + "].[" + subject + "]\"")) {
                return;
            }
            m_result.lastShortcut = bracketed(m_path);
            close("shortcut");
            ++m_result.shortcuts;
        }
    }

    void shuffle(std::vector<std::size_t>& numbers) {
        for (std::size_t i = numbers.size(); i > 1; --i) {
            std::swap(numbers[i - 1], numbers[m_random.below(i)]);
        }
    }

    void writeViews() {
        line("<securityViews>");
        ++m_indent;
        view("view.all", "Everything", "", "", {{"included", 1, 1}});
        view("view.half", "Half", "", "", {{"included", 1, 2}});
        if (m_plan.roleViews != RoleViews::None) {
            view("view.clerk", "Clerks", " roleBased=\"true\"", "<member roleId=\"clerk\"/>",
                 {{"included", 3, 4}, {"excluded", 1, 16}, {"hidden", 1, 16}});
        }
        if (m_plan.roleViews == RoleViews::WithDefault) {
            view("view.default", "Others", " roleBased=\"true\"", "", {{"excluded", 1, 4}});
        }
        --m_indent;
        line("</securityViews>");
    }

    /// A set that lists `part` of each `of` objects, chosen at random.
    struct ViewSet {
        char const* kind;
        std::size_t part;
        std::size_t of;
    };

    void view(std::string const& id, std::string const& name, std::string const& attributes,
              std::string const& member, std::vector<ViewSet> const& sets) {
        line("<securityView id=\"" + id + "\" name=\"" + name + '"' + attributes + '>');
        ++m_indent;
        if (!member.empty()) {
            line(member);
        }
        for (ViewSet const& set : sets) {
            writeSet(set);
        }
        --m_indent;
        line("</securityView>");
    }

    void writeSet(ViewSet const& set) {
        std::string const open = std::string("<set kind=\"") + set.kind + "\">";
        std::string const begin = m_plan.setForEachId ? open + "<item>" : "  <item>";
        std::string const end = m_plan.setForEachId ? "</item></set>" : "</item>";
        if (!m_plan.setForEachId) {
            line(open);
        }
        for (std::size_t object = 0; object < m_letters.size(); ++object) {
            if (m_random.below(set.of) < set.part) {
                line(begin + idOf(object) + end);
            }
        }
        if (!m_plan.setForEachId) {
            line("</set>");
        }
    }

    ModelPlan const& m_plan;
    Random m_random;
    GeneratedModel m_result;
    std::string m_letters; // of each object's class
    std::vector<std::string> m_path;
    std::vector<Landmarks> m_middle; // of each whole namespace
    std::size_t m_namespaces = 0;
    std::size_t m_indent = 0;
};

} // namespace

std::string SubjectPlace::pathText() const {
    return bracketed(path);
}

std::string SubjectPlace::referenceText() const {
    constexpr std::size_t namespaceLevel = 2;
    return bracketed({path[namespaceLevel], path.back(), item});
}

GeneratedModel generateModel(ModelPlan const& plan) {
    return Writer(plan).write();
}

std::string generateCatalogue(std::string const& modelFile) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<catalog>\n"
           "  <model path=\"" +
           std::string(ModelPath) + "\" file=\"" + modelFile +
           "\">\n"
           "    <grant role=\"all\" view=\"view.all\"/>\n"
           "    <grant role=\"half\" view=\"view.half\"/>\n"
           "    <grant role=\"clerk\" view=\"view.all\"/>\n"
           "  </model>\n"
           "  <user name=\"all\"><role>all</role></user>\n"
           "  <user name=\"half\"><role>half</role></user>\n"
           "  <user name=\"clerk\"><role>clerk</role></user>\n"
           "</catalog>\n";
}

} // namespace bench
