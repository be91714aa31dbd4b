#include "host/insight/TreeQuestion.h"

#include "VexObject.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/ReferenceText.h"

#include <iterator>
#include <unordered_set>

namespace vex {

MetadataRequest TreeQuestion::makeRequest() const {
    MetadataRequest request;
    request.start = start;
    request.depth = depth;
    request.view = view;
    // The marker last: it has something to repeat.
    for (I18NString const& property :
         {I18NString("name"), I18NString("ID"), I18NString("_path"), marker}) {
        request.addProperty(property);
    }
    if (goesIntoEveryCollection()) {
        request.addCollection("*");
        if (!start.empty()) {
            request.collections.insert(request.collections.end(), std::begin(collectionsOnThePath),
                                       std::end(collectionsOnThePath));
        }
    }
    for (I18NString const& collection : collections) {
        request.addCollection(collection);
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

I18NString startPathOf(VEX_HANDLE element, I18NLocale const& locale) {
    std::vector<I18NString> names;
    VEX_HANDLE at = element;
    for (VEX_HANDLE around = VexObject(at).GetParent(); around.IsNotNull();
         around = VexObject(at).GetParent()) {
        names.push_back(nameIn(locale, at));
        at = around;
    }
    I18NString path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (name->empty()) {
            return {};
        }
        appendToReference(path, name->view());
    }
    return path;
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
