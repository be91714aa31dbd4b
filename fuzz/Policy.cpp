#include "KRLException.h"
#include "VexObject.h"
#include "fuzz/FuzzTargets.h"
#include "host/catalogue/PolicyViews.h"
#include "host/import/xml/ModelLoader.h"

#include <algorithm>

namespace {

constexpr char fixedModel[] = R"xml(<model defaultLocale="en">
<namespace id="n" name="N"><folder id="f" name="F"><querySubject id="q" name="Q">
<queryItem id="a" name="A" usage="fact" tags="pii, x"/><queryItem id="b" name="B" usage="attribute"/>
</querySubject></folder>
<calculation id="c" name="C" expression="[N].[Q].[A] + [B]"/>
<calculation id="d" name="D" expression="[C] * [N].[S].[A]"/>
<shortcut id="s" name="S" refobj="[N].[Q]"/>
<namespace id="o" name="O"><querySubject id="p" name="Q"><queryItem name="A"/></querySubject></namespace>
</namespace></model>)xml";

std::shared_ptr<vex::Policy const> read(std::string_view input) {
    try {
        return vex::readPolicyText(input, "p.yaml");
    } catch (KRLDocumentException const& problem) {
        fuzz::require(!problem.GetProblem().empty() && problem.GetLine() != 0,
                      "an error has a place");
    }
    return nullptr;
}

} // namespace

void fuzz::policy(std::string_view input) {
    auto const policy = read(input);
    if (policy == nullptr) {
        return;
    }
    vex::PolicyViews views(*policy);
    vex::LoadOptions options;
    options.addition = &views;
    options.keepPositions = true;
    vex::Diagnostics found;
    auto const loaded = vex::loadModelText(fixedModel, "m.xml", options, found);
    bool const hasError = std::any_of(found.begin(), found.end(), [](auto const& problem) {
        return problem.severity == vex::Severity::Error;
    });
    require((loaded == nullptr) == hasError, "a model is loaded or an error is reported");
    if (loaded == nullptr) {
        return;
    }
    for (vex::PolicyView const& view : policy->views) {
        require(loaded->findById(view.id).IsNotNull(), "a view of the policy is one of the model");
    }
    Vex_Handle_Collection items;
    VexObject(loaded->GetRootObject()).getElementsByTagName("item", items);
    for (VEX_HANDLE const item : items) {
        I18NString id;
        VexObject(item).GetValue(id, true);
        require(loaded->findById(id).IsNotNull(), "what a view lists is an object");
    }
}
