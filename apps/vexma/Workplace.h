#pragma once

#include "apps/vexma/Console.h"
#include "apps/vexma/SourceOptions.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/Service.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace vex {

/// What a command works with: the service, and a visit to the model that the
/// command line names.
class Workplace {
public:
    Workplace(SourceOptions const& options, Console& console);
    /// A further visit, with the service of another workplace.
    Workplace(Workplace const& other, SourceOptions const& options, Console& console);
    /// The visit in another language.
    Workplace(Workplace const& other, I18NLocale const& locale);
    /// The visit of another user of the same catalogue, who stays where he is; null stands for
    /// everybody, where nobody is restricted.
    Workplace(Workplace const& other, std::shared_ptr<CatalogueUser const> user);

    Visit const& visit() const { return m_visit; }
    Model const& model() const { return m_visit.model(); }
    I18NLocale const& locale() const { return m_visit.locale; }
    /// Null where nobody is restricted.
    std::shared_ptr<Catalogue const> const& catalogue() const { return m_visit.catalogue; }
    I18NString const& modelPath() const { return m_visit.version->path(); }
    /// How large an answer may grow.
    KRLIDOM_Limits const& responseLimits() const { return m_limits.response; }

    /// @{
    /// The calls of `Service`, under the command line's limits; an interrupt
    /// ends them. Without an id they start where the request says.
    MetadataAnswer metadata(MetadataRequest const& request);
    MetadataAnswer metadata(KRLIDOM_Document const& request);
    MetadataAnswer observedMetadata(KRLIDOM_Document const& request, VexTreeObserver& observer);
    MetadataAnswer metadataAt(I18NString const& idOrReference, KRLIDOM_Document const& request);
    AccessAnswer access(Vex_Handle_Collection const& objects, long mode);
    AccessReasons explain(Vex_Handle_Collection const& objects, bool skipViewLists);
    CallEnd explainTree(KRLIDOM_Document const& request, VexTreeObserver& observer);
    CallEnd explainTreeAt(I18NString const& idOrReference, KRLIDOM_Document const& request,
                          VexTreeObserver& observer);
    /// @}

    /// `workWithin` the command line's limits: calls, and what the host makes of their
    /// answers.
    CallEnd together(std::function<void()> const& work) const;

private:
    ActionLimits m_limits;
    Visit m_visit;
    std::shared_ptr<Service> m_service;
};

/// Where the model that the options name comes from. One on standard input is read.
std::shared_ptr<ContentStore> contentOf(SourceOptions const& options, Console& console,
                                        LoadOptions load = {});
/// Who asks for it, as the options say.
VisitRequest visitRequestOf(SourceOptions const& options);

/// A visit to the model that the options name, which is read.
Visit openVisit(SourceOptions const& options, Console& console);

/// What one call may use up, by the options.
ActionLimits limitsOf(SourceOptions const& options);
/// None for the longest ones, too.
std::optional<std::chrono::milliseconds> deadlineOf(std::optional<double> const& seconds);

/// Does what belongs together under one budget of these limits; an interrupt ends it. Gives
/// "Answered", or what ended it.
CallEnd workWithin(ActionLimits limits, std::function<void()> const& work);

/// Complains about a call that was not answered; gives the status to end with.
int complainAbout(CallEnd const& end, Console& console);

} // namespace vex
