#include "host/insight/ObjectText.h"

#include "VexObject.h"
#include "host/insight/ObjectReference.h"
#include "host/store/image/Budget.h"

namespace vex {

I18NString classOf(VEX_HANDLE object) {
    I18NString name;
    VexObject(object).GetName(name);
    return name;
}

I18NString idOf(VEX_HANDLE object) {
    I18NString id;
    VexObject(object).GetId(id);
    return id;
}

VEX_HANDLE namespaceAround(VEX_HANDLE object) {
    VEX_HANDLE at = VexObject(object).GetParent();
    while (at.IsNotNull() && classOf(at) != "namespace") {
        at = VexObject(at).GetParent();
    }
    return at;
}

VEX_HANDLE outermostNamespaceOf(VEX_HANDLE object) {
    VEX_HANDLE outermost;
    for (VEX_HANDLE at = object; at.IsNotNull(); at = VexObject(at).GetParent()) {
        if (classOf(at) == "namespace") {
            outermost = at;
        }
    }
    return outermost;
}

VEX_HANDLE targetOf(Model const& model, VEX_HANDLE shortcut) {
    static I18NString const property("refobj");
    Vex_Handle_Collection properties;
    VexObject(shortcut).Properties(properties, &property, nullptr, false);
    VEX_HANDLE target;
    for (VEX_HANDLE const each : properties) {
        I18NString reference;
        if (VexObject(each).GetValue(reference, true)) {
            target = model.GetObjectByReference(reference, 0);
        }
    }
    return target;
}

ObjectLabel labelOf(Model const& model, VEX_HANDLE object, I18NLocale const& locale) {
    return {idOf(object).toUtf8(), boundedReferenceOf(model, object).toUtf8(),
            classOf(object).toUtf8(), nameIn(locale, object).toUtf8(),
            model.findPosition(object).value_or(DocumentPosition{})};
}

std::vector<ObjectLabel> labelsOf(Model const& model, std::vector<VEX_HANDLE> const& objects,
                                  I18NLocale const& locale) {
    std::vector<ObjectLabel> labels;
    labels.reserve(objects.size());
    for (VEX_HANDLE const object : objects) {
        labels.push_back(labelOf(model, object, locale));
        Budget::chargeBytes(labels.back().byteCount());
    }
    return labels;
}

std::string describeObject(ObjectLabel const& label) {
    return label.className + (label.name.empty() ? "" : " \"" + label.name + '"') +
           (label.id.empty() ? "" : " (" + label.id + ')');
}

std::string describeObject(VEX_HANDLE object, I18NLocale const& locale) {
    return describeObject(ObjectLabel{idOf(object).toUtf8(), "", classOf(object).toUtf8(),
                                      nameIn(locale, object).toUtf8()});
}

std::string idAndName(VEX_HANDLE object, I18NLocale const& locale) {
    std::string const id = idOf(object).toUtf8();
    std::string const name = nameIn(locale, object).toUtf8();
    return id.empty() || name.empty() ? id + name : id + ' ' + name;
}

I18NString keyOf(Model const& model, VEX_HANDLE object) {
    I18NString key = idOf(object);
    if (key.empty()) {
        model.getReference(object, key);
    }
    return key;
}

} // namespace vex
