#include "host/import/ossie/OssieModel.h"

#include "host/import/draft/PlainText.h"
#include "host/import/ossie/OssieKeys.h"
#include "host/import/ossie/OssieTexts.h"

#include <algorithm>
#include <array>

namespace vex {

namespace {

constexpr std::array<std::string_view, 3> numericTypes{"int64", "decimal", "double"};

class ModelReader {
public:
    ModelReader(OssieModel& model, ImportWork& work) : m_model(model), m_work(work) {}

    void readDataset(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries entries(tree, value, "dataset", m_work);
        OssieDataset dataset{.name = entries.name(), .object = DraftObject::None};
        m_work.account.mapped("dataset");
        dataset.object = draft().add(m_model.space, "querySubject",
                                     {"dataset", m_model.pathTo(dataset.name)}, entries.position());
        m_work.countMade(1, m_model.name.size() + dataset.name.size(), entries.position());
        draft().set(dataset.object, "name", dataset.name);
        copyTexts(entries, dataset.object, m_work);
        copyText(entries, dataset.object, m_work, "source");
        for (SourceTree::Value const each : entries.list("fields")) {
            readField(tree, each, dataset);
        }
        for (std::size_t number = 0; number < dataset.fields.size(); ++number) {
            // What a field is called goes before what another one is made of.
            dataset.fieldOfColumn.emplace(foldedCase(dataset.fields[number].name), number);
        }
        for (std::size_t number = 0; number < m_columns.size(); ++number) {
            dataset.fieldOfColumn.emplace(foldedCase(trimmed(m_columns[number])), number);
        }
        m_columns.clear();
        readKeys(entries, dataset);
        entries.leaveOutRest(unmappedOssieKeys(), dataset.name);
        m_model.datasetOfName.emplace(foldedCase(dataset.name), m_model.datasets.size());
        m_model.datasets.push_back(std::move(dataset));
    }

    void readMetric(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries metric(tree, value, "metric", m_work);
        std::string const name = metric.name();
        m_work.account.mapped("metric");
        std::size_t const object = draft().add(m_model.space, "calculation",
                                               {"metric", m_model.pathTo(name)}, metric.position());
        m_work.countMade(1, m_model.name.size() + name.size(), metric.position());
        draft().set(object, "name", name);
        copyDatatype(metric, object, m_work);
        draft().set(object, "usage", "fact");
        copyExpression(metric, object, m_work);
        copyTexts(metric, object, m_work);
        metric.leaveOutRest(unmappedOssieKeys(), name);
    }

    /// Keys identify, numbers that are no dimension are summed.
    void setUsages() {
        for (OssieDataset const& dataset : m_model.datasets) {
            for (OssieField const& field : dataset.fields) {
                draft().set(field.object, "usage",
                            field.isKey      ? "identifier"
                            : field.isNumber ? "fact"
                                             : "attribute");
            }
        }
    }

private:
    ModelDraft& draft() { return m_work.draft.model; }

    void readField(SourceTree const& tree, SourceTree::Value value, OssieDataset& dataset) {
        SourceEntries entries(tree, value, "field", m_work);
        OssieField field{.name = entries.name(), .object = DraftObject::None};
        m_work.account.mapped("field");
        field.object =
            draft().add(dataset.object, "queryItem",
                        {"field", m_model.pathTo(dataset.name, field.name)}, entries.position());
        m_work.countMade(1, m_model.name.size() + dataset.name.size() + field.name.size(),
                         entries.position());
        draft().set(field.object, "name", field.name);
        std::string const type = copyDatatype(entries, field.object, m_work);
        field.isNumber =
            !entries.has("dimension") &&
            std::find(numericTypes.begin(), numericTypes.end(), type) != numericTypes.end();
        if (SourceTree::Value const dimension = entries.map("dimension");
            dimension != SourceTree::None) {
            SourceEntries role(tree, dimension, "dimension", m_work);
            copyText(role, field.object, m_work, "is_time", "isTime");
            role.leaveOutRest(unmappedOssieKeys(), field.name);
        }
        copyText(entries, field.object, m_work, "label");
        m_columns.push_back(copyExpression(entries, field.object, m_work));
        copyTexts(entries, field.object, m_work);
        entries.leaveOutRest(unmappedOssieKeys(), field.name);
        dataset.fields.push_back(std::move(field));
    }

    void readKeys(SourceEntries& entries, OssieDataset& dataset) {
        SourceTree const& tree = entries.tree();
        for (SourceTree::Value const each : entries.list("primary_key")) {
            readKeyColumn(tree, each, "primary key column", dataset);
        }
        for (SourceTree::Value const key : entries.list("unique_keys")) {
            if (tree.kind(key) != SourceTree::Kind::List) {
                readKeyColumn(tree, key, "unique key column", dataset);
            }
            for (auto each = tree.first(key); each != SourceTree::None; each = tree.next(each)) {
                readKeyColumn(tree, each, "unique key column", dataset);
            }
        }
    }

    void readKeyColumn(SourceTree const& tree, SourceTree::Value value, char const* kind,
                       OssieDataset& dataset) {
        std::string const column(tree.textOf(value));
        OssieField* const field = dataset.find(column);
        if (field == nullptr) {
            m_work.account.leftOut(kind, ossieReasons::NoField,
                                   {dataset.name + '.' + column, tree.positionOf(value)});
            return;
        }
        m_work.account.mapped(kind);
        field->isKey = true;
    }

    OssieModel& m_model;
    ImportWork& m_work;
    std::vector<std::string> m_columns; // of the dataset that is read, one for each field
};

} // namespace

OssieField* OssieDataset::find(std::string const& column) {
    auto const found = fieldOfColumn.find(foldedCase(trimmed(column)));
    return found == fieldOfColumn.end() ? nullptr : &fields[found->second];
}

OssieDataset* OssieModel::find(std::string const& dataset) {
    auto const found = datasetOfName.find(foldedCase(dataset));
    return found == datasetOfName.end() ? nullptr : &datasets[found->second];
}

std::string OssieModel::pathTo(std::string_view inside) const {
    std::string path;
    appendToPath(path, name);
    appendToPath(path, inside);
    return path;
}

std::string OssieModel::pathTo(std::string_view outer, std::string_view inside) const {
    std::string path = pathTo(outer);
    appendToPath(path, inside);
    return path;
}

void readOssieModel(SourceTree const& tree, SourceTree::Value value, ImportWork& work) {
    SourceEntries entries(tree, value, "semantic model", work);
    OssieModel model{.name = entries.name(), .space = ModelDraft::Root};
    work.account.mapped("semantic model");
    std::string path;
    appendToPath(path, model.name);
    model.space =
        work.draft.model.add(ModelDraft::Root, "namespace", {"model", path}, entries.position());
    work.draft.model.set(model.space, "name", model.name);
    copyTexts(entries, model.space, work);

    ModelReader reader(model, work);
    for (SourceTree::Value const each : entries.list("datasets")) {
        reader.readDataset(tree, each);
    }
    readOssieRelationships(entries, model, work);
    for (SourceTree::Value const each : entries.list("metrics")) {
        reader.readMetric(tree, each);
    }
    reader.setUsages();
    entries.leaveOutRest(unmappedOssieKeys(), model.name);
}

} // namespace vex
