#include "host/import/tabular/HiddenSpread.h"

#include "host/import/draft/ImportWork.h"
#include "host/import/draft/PlainText.h"
#include "host/import/tabular/ExpressionNames.h"

#include <map>
#include <tuple>

namespace vex {

class HiddenSpread::Builder {
public:
    Builder(TabularModel const& model, std::vector<std::vector<std::size_t>>& hides)
        : m_parts(model.parts), m_hides(hides) {
        m_hides.resize(m_parts.size());
    }

    void build() {
        for (std::size_t number = 0; number < m_parts.size(); ++number) {
            enter(number);
        }
        for (std::size_t number = 0; number < m_parts.size(); ++number) {
            TabularPart const& part = m_parts[number];
            if (part.kind == TabularKind::Level) {
                read({ExpressionName::Kind::OfTable, tableNameOf(part), foldedCase(part.column)},
                     number);
            }
            for (ExpressionName const& name : namesInExpression(part.expression)) {
                read(name, number);
            }
        }
    }

private:
    /// What a name is looked up by: its sort, the table for `OfTable`, and itself.
    enum class Sort { Table, Member, Measure, OfTable, Function };
    using NameKey = std::tuple<Sort, std::u16string, std::u16string>;

    std::size_t nodeOf(NameKey const& key) {
        auto const [known, isNew] = m_names.try_emplace(key, m_hides.size());
        if (isNew) {
            m_hides.emplace_back();
        }
        return known->second;
    }

    std::u16string tableNameOf(TabularPart const& part) const {
        return foldedCase(m_parts[part.table].name);
    }

    void enter(std::size_t number) {
        TabularPart const& part = m_parts[number];
        std::u16string const name = foldedCase(part.name);
        if (part.table != TabularPart::None) {
            m_hides[part.table].push_back(number);
        }
        switch (part.kind) {
        case TabularKind::Table:
            bear({Sort::Table, {}, name}, number);
            break;
        case TabularKind::Column:
            bear({Sort::Member, {}, name}, number);
            bear({Sort::OfTable, tableNameOf(part), name}, number);
            break;
        case TabularKind::Measure:
            bear({Sort::Member, {}, name}, number);
            bear({Sort::Measure, {}, name}, number);
            break;
        case TabularKind::Function:
            bear({Sort::Function, {}, name}, number);
            break;
        case TabularKind::Hierarchy:
        case TabularKind::Level:
            break; // no expression can name them
        }
    }

    void bear(NameKey const& key, std::size_t part) {
        std::size_t const node = nodeOf(key);
        m_hides[part].push_back(node);
    }

    void read(ExpressionName const& name, std::size_t reader) {
        using Kind = ExpressionName::Kind;
        switch (name.kind) {
        case Kind::Table:
            follow({Sort::Table, {}, name.name}, reader);
            break;
        case Kind::Member:
            follow({Sort::Member, {}, name.name}, reader);
            break;
        case Kind::Function:
            follow({Sort::Function, {}, name.name}, reader);
            break;
        case Kind::OfTable: {
            bool const isTable = follow({Sort::Table, {}, name.table}, reader);
            bool const isColumn = follow({Sort::OfTable, name.table, name.name}, reader);
            bool const isMeasure = follow({Sort::Measure, {}, name.name}, reader);
            if (!isTable || (!isColumn && !isMeasure)) { // of a variable, who knows
                follow({Sort::Member, {}, name.name}, reader);
            }
            break;
        }
        }
    }

    /// False when nothing bears the name.
    bool follow(NameKey const& key, std::size_t reader) {
        auto const known = m_names.find(key);
        if (known == m_names.end()) {
            return false;
        }
        m_hides[known->second].push_back(reader);
        return true;
    }

    std::vector<TabularPart> const& m_parts;
    std::vector<std::vector<std::size_t>>& m_hides;
    std::map<NameKey, std::size_t> m_names;
};

HiddenSpread::HiddenSpread(TabularModel const& model) : m_partCount(model.parts.size()) {
    Builder(model, m_hides).build();
}

std::vector<bool> HiddenSpread::spread(std::vector<std::size_t> const& first,
                                       ImportWork& work) const {
    std::vector<bool> isHidden(m_hides.size());
    std::vector<std::size_t> waiting;
    auto const hide = [&](std::size_t node) {
        if (!isHidden[node]) {
            isHidden[node] = true;
            waiting.push_back(node);
        }
    };
    for (std::size_t const part : first) {
        hide(part);
    }
    while (!waiting.empty()) {
        std::size_t const node = waiting.back();
        waiting.pop_back();
        work.spendOnViews(m_hides[node].size());
        for (std::size_t const other : m_hides[node]) {
            hide(other);
        }
    }
    isHidden.resize(m_partCount);
    return isHidden;
}

} // namespace vex
