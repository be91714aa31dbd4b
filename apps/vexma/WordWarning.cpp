#include "apps/vexma/WordWarning.h"

#include "KRLException.h"
#include "host/insight/RequestDocumentChecks.h"
#include "host/insight/RequestWords.h"

#include <map>
#include <unordered_set>

namespace vex {

namespace {

/// Where each entry of a request document stands first.
class EntryPlaces {
public:
    EntryPlaces(DocumentOutline const& outline, std::string const& file) : m_file(file) {
        for (std::size_t number = 0; number < outline.size(); ++number) {
            OutlinedElement const element = outline[number];
            for (auto const& [name, value] : element.attributes) {
                m_places.try_emplace(value, element.position);
            }
        }
    }

    /// "request.xml:3:5: ", or "" for what stands in no document.
    std::string before(I18NString const& entry) const {
        auto const at = m_places.find(entry);
        return entry.empty() || at == m_places.end()
                   ? ""
                   : placeOf(
                         {Severity::Warning, "", m_file, at->second.line, at->second.column, ""});
    }

private:
    std::string const& m_file;
    std::map<I18NString, DocumentPosition> m_places;
};

/// Keeps the objects that an answer shows, those that shortcuts stand for too.
class WrittenObjects final : public VexTreeObserver {
public:
    explicit WrittenObjects(std::size_t limit) : m_limit(limit) {}

    void report(VexTreeReport const& report) override {
        if (++m_reports > m_limit) {
            throw KRLLimitException("the answer is too large to be gone through again");
        }
        if (report.treatment == VexTreeTreatment::Written) {
            m_objects.insert(report.object);
            if (report.target.IsNotNull()) {
                m_objects.insert(report.target);
            }
        }
    }
    void reportOutside(VexTreeSize const& /*size*/) override {}

    std::vector<VEX_HANDLE> take() const { return {m_objects.begin(), m_objects.end()}; }

private:
    std::size_t m_limit;
    std::size_t m_reports = 0;
    std::unordered_set<VEX_HANDLE> m_objects;
};

/// False for a user who is refused whatever he asks.
bool maySeeModel(Workplace const& workplace) {
    Workplace asking(workplace, workplace.visit().user);
    Vex_Handle_Collection root;
    root.push_back(workplace.model().GetRootObject());
    return asking.access(root, 0).end.kind != CallEnd::Kind::Raised;
}

/// What the plug-in does not tell is not there.
std::vector<VEX_HANDLE> answeredObjects(WrittenRequest const& request, Workplace& workplace) {
    WrittenObjects objects(workplace.responseLimits().elements);
    workplace.explainTreeAt(request.startId, request.document.document(), objects);
    return objects.take();
}

} // namespace

void warnAboutWords(WrittenRequest const& request, Workplace& workplace,
                    RequestWarnings& warnings) {
    DocumentOutline const outline = outlineOf(request.text);
    for (Diagnostic const& each : checkRequestDocument(outline, request.file)) {
        warnings.add(placeOf(each) + each.text);
    }
    SeenWords seen(
        workplace.model(),
        [&](Vex_Handle_Collection const& objects) { return workplace.access(objects, 0).verdicts; },
        [&] { return answeredObjects(request, workplace); });
    EntryPlaces const places(outline, request.file);
    for (DoubtfulWord const& each : doubtfulWords(request.asked, workplace.visit(), seen)) {
        warnings.add(places.before(each.entry) + each.text);
    }
}

void warnAboutLocale(Workplace const& workplace, RequestWarnings& warnings) {
    std::string text = doubtfulLocale(workplace.visit());
    if (!text.empty() && maySeeModel(workplace)) { // it names the model's languages
        warnings.add(std::move(text));
    }
}

void complainAboutLocale(Visit const& visit, Console& console) {
    std::string const text = doubtfulLocale(visit);
    if (!text.empty()) {
        console.complain("warning: " + text);
    }
}

void complainAboutLocale(Workplace const& workplace, Console& console) {
    complainAboutLocale(workplace.visit(), console);
}

} // namespace vex
