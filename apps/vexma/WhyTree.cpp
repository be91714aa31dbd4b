#include "apps/vexma/WhyTree.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/TextColours.h"
#include "apps/vexma/TreeBranches.h"
#include "host/insight/AccessStory.h"
#include "host/insight/ObjectText.h"

#include <unordered_map>

namespace vex {

namespace {

/// Why the access decision leaves objects out, in words.
class Reasons {
public:
    Reasons(Workplace& workplace, AnsweredTree const& tree) {
        for (bool const skipViewLists : {false, true}) {
            Vex_Handle_Collection objects;
            for (AnsweredObject const& entry : tree) {
                if (entry.fate == ObjectFate::LeftOut &&
                    entry.passesOverViewLists == skipViewLists) {
                    objects.push_back(entry.object);
                }
            }
            if (!objects.empty() && m_end.isAnswered()) {
                add(workplace, objects, skipViewLists);
            }
        }
    }

    /// How asking for them ended; without an answer there are none.
    CallEnd const& end() const { return m_end; }

    std::string const& of(AnsweredObject const& entry) const {
        return m_texts[entry.passesOverViewLists ? 1 : 0].at(entry.object);
    }

private:
    void add(Workplace& workplace, Vex_Handle_Collection const& objects, bool skipViewLists) {
        AccessReasons const reasons = workplace.explain(objects, skipViewLists);
        m_end = reasons.end;
        if (!m_end.isAnswered()) {
            return;
        }
        AccessStory const story(workplace.model(), workplace.locale(), reasons.explanation);
        for (std::size_t index = 0; index < objects.size(); ++index) {
            m_texts[skipViewLists ? 1 : 0].try_emplace(
                objects[index], story.verdictOf(reasons.explanation.objects[index]));
        }
    }

    CallEnd m_end{.kind = CallEnd::Kind::Answered};

    std::unordered_map<VEX_HANDLE, std::string> m_texts[2];
};

std::string reasonOf(AnsweredObject const& entry, Reasons const& reasons,
                     I18NLocale const& locale) {
    switch (entry.fate) {
    case ObjectFate::Written:
        break;
    case ObjectFate::LeftOut:
        return reasons.of(entry);
    case ObjectFate::WithoutName:
        return "no name in " + locale.getName().toUtf8() + ", so left out with all its members";
    case ObjectFate::WithItsContainer:
        return "left out with what it stands in";
    case ObjectFate::NothingToStandFor:
        return "a shortcut without a name or a target";
    }
    return {};
}

/// The tag that the answer has for the entry.
std::string tagOf(AnsweredObject const& entry) {
    I18NString const name = classOf(entry.target.IsNotNull() ? entry.target : entry.object);
    return name == "namespace" ? "folder" : name.toUtf8();
}

} // namespace

CallEnd drawTreeWithReasons(std::ostream& out, Workplace& workplace, AnsweredTree const& tree,
                            bool colour) {
    TextColours const& style = textColours(colour);
    I18NLocale const& locale = workplace.locale();
    Reasons const reasons(workplace, tree);
    if (!reasons.end().isAnswered()) {
        return reasons.end();
    }
    std::vector<std::size_t> containers;
    for (AnsweredObject const& entry : tree) {
        containers.push_back(entry.container);
    }
    TreeBranches const branches(containers);
    for (std::size_t number = 0; number < tree.size(); ++number) {
        AnsweredObject const& entry = tree[number];
        out << style.detail << branches.before(number) << style.end;
        std::string const name = printable(nameIn(locale, entry.object).toUtf8(), false);
        if (entry.fate == ObjectFate::Written) {
            out << style.className << printable(tagOf(entry), false) << style.end << ' '
                << style.name << name << style.end << '\n';
            continue;
        }
        std::string const called =
            name.empty() ? '(' + printable(idOf(entry.object).toUtf8(), false) + ')' : name;
        std::string const text = printable(tagOf(entry), false) + ' ' + called + "  " +
                                 printable(reasonOf(entry, reasons, locale), false);
        out << (colour ? style.detail + text + style.end : '[' + text + ']') << '\n';
    }
    return reasons.end();
}

} // namespace vex
