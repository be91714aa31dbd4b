#include "host/import/draft/PlainText.h"
#include "host/import/ossie/OssieKeys.h"
#include "host/import/ossie/OssieModel.h"
#include "host/import/ossie/OssieTexts.h"

namespace vex {

namespace {

class RelationshipReader {
public:
    RelationshipReader(OssieModel& model, ImportWork& work) : m_model(model), m_work(work) {}

    void read(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries entries(tree, value, "relationship", m_work);
        std::string const name = entries.name();
        OssieDataset* const from = m_model.find(entries.name("from"));
        OssieDataset* const to = m_model.find(entries.name("to"));
        std::vector<SourceTree::Value> const fromColumns = entries.list("from_columns");
        std::vector<SourceTree::Value> const toColumns = entries.list("to_columns");
        char const* const problem = from == nullptr || to == nullptr ? ossieReasons::UnknownDataset
                                    : fromColumns.size() != toColumns.size()
                                        ? ossieReasons::UnevenColumns
                                        : nullptr;
        if (problem != nullptr) {
            m_work.account.leftOut("relationship", problem, {name, entries.position()});
            return;
        }
        m_work.account.mapped("relationship");
        ModelDraft& draft = m_work.draft.model;
        std::size_t const object =
            draft.add(m_model.space, "relationship", {"relationship", m_model.pathTo(name)},
                      entries.position());
        m_work.countMade(1, 3 * m_model.name.size() + from->name.size() + to->name.size(),
                         entries.position());
        draft.set(object, "name", name);
        draft.set(object, "left", m_model.pathTo(from->name));
        draft.set(object, "leftCardinality", "0..n");
        draft.set(object, "right", m_model.pathTo(to->name));
        draft.set(object, "rightCardinality", "0..1");
        std::string expression;
        for (std::size_t number = 0; number < fromColumns.size(); ++number) {
            m_work.countMade(1, 2 * m_model.name.size() + from->name.size() + to->name.size(),
                             entries.position());
            expression += (expression.empty() ? "" : " and ") +
                          end(*from, tree, fromColumns[number]) + " = " +
                          end(*to, tree, toColumns[number]);
        }
        draft.set(object, "expression", expression);
        copyTexts(entries, object, m_work);
        entries.leaveOutRest(unmappedOssieKeys(), name);
    }

private:
    /// A reference to the field, else the column as the source calls it.
    std::string end(OssieDataset& dataset, SourceTree const& tree, SourceTree::Value value) {
        std::string const column(tree.textOf(value));
        OssieField* const field = dataset.find(column);
        if (field == nullptr) {
            m_work.account.leftOut("joined column", ossieReasons::NoField,
                                   {dataset.name + '.' + column, tree.positionOf(value)});
            return dataset.name + '.' + column;
        }
        m_work.account.mapped("joined column");
        field->isKey = true;
        return m_model.pathTo(dataset.name, field->name);
    }

    OssieModel& m_model;
    ImportWork& m_work;
};

} // namespace

void readOssieRelationships(SourceEntries& entries, OssieModel& model, ImportWork& work) {
    RelationshipReader reader(model, work);
    for (SourceTree::Value const each : entries.list("relationships")) {
        reader.read(entries.tree(), each);
    }
}

} // namespace vex
