#include "host/insight/TreeQuestion.h"

#include "VexObject.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/ReferenceText.h"

#include <string>
#include <unordered_set>

namespace vex {

namespace {

void addProperty(KRLIDOM_Element const& metadata, I18NString const& text,
                 char const* prefix = "*/") {
    KRLIDOM_Element const entry = metadata.getOwnerDocument().createElement("Property");
    entry.setAttribute("name", I18NString(prefix) + text);
    metadata.appendChild(entry);
}

} // namespace

KRLIDOM_OwnedDocument TreeQuestion::makeRequest() const {
    KRLIDOM_OwnedDocument request("Metadata");
    KRLIDOM_Element const metadata = request.document().getDocumentElement();
    metadata.setAttribute("Depth", I18NString(std::to_string(depth).c_str()));
    metadata.setAttribute("start_at", start);
    metadata.setAttribute("securityView", view);
    addProperty(metadata, "@name");
    addProperty(metadata, "@ID");
    addProperty(metadata, "@_path");
    addProperty(metadata, I18NString("@") + marker); // last: it has something to repeat
    if (goesIntoEveryCollection()) {
        addProperty(metadata, "*");
        for (char const* const collection : collectionsOnThePath) {
            if (!start.empty()) {
                addProperty(metadata, collection, "");
            }
        }
    }
    for (I18NString const& collection : collections) {
        addProperty(metadata, collection);
    }
    return request;
}

std::vector<I18NString> collectionsOf(Model const& model) {
    std::vector<I18NString> found;
    std::unordered_set<I18NString> known{"shortcut", "namespace"};
    for (std::size_t index = 1; index < model.elementCount(); ++index) { // the root is no member
        I18NString name = classOf(model.getElement(index));
        if (known.insert(name).second) {
            found.push_back(std::move(name));
        }
    }
    return found;
}

std::vector<TreeStart> treeStartsOf(Model const& model, I18NLocale const& locale) {
    Vex_Handle_Collection spaces;
    VexObject(model.GetRootObject()).getElementsByTagName("namespace", spaces);
    std::unordered_set<I18NString> taken;
    std::vector<TreeStart> starts;
    for (VEX_HANDLE const space : spaces) {
        I18NString const name = nameIn(locale, space);
        bool const isFirst = taken.insert(name).second;
        if (namespaceAround(space).IsNotNull()) {
            continue;
        }
        TreeStart& start = starts.emplace_back(TreeStart{space, {}});
        if (isFirst && !name.empty()) {
            appendToReference(start.path, name.view());
        }
    }
    return starts;
}

I18NString unusedPropertyOf(Model const& model) {
    std::unordered_set<I18NString> used;
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        Vex_Handle_Collection properties;
        VexObject(model.getElement(index)).Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            used.insert(classOf(property));
        }
    }
    I18NString name("standsForShortcut");
    while (used.contains(name)) {
        name.append(u'_');
    }
    return name;
}

} // namespace vex
