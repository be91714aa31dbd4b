// The attributes of the objects in the tree.

#include "model/VexCollections.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/tree/VexElementReference.h"
#include "provider/tree/VexMDMaTreeObject.h"
#include "resources.h"

bool VexMDMaTreeWriter::collectAttributes(VexTreePlace const& place,
                                          VexPropertySelection& requested, Object& object) {
    m_attributeCount = 0;
    m_constraints.clear();
    if (place.isStart) {
        m_context.helper.GetConstraintsForClass(place.className, m_constraints);
    }
    if (requested.all) {
        object.allAttributes.emplace(attributesOf(object.handle));
    }
    VexPropertySelection& selected = requested.all ? *object.allAttributes : requested;
    if (selected.hasPath || selected.hasReference) {
        readName(object);
    }
    for (VexSelectedProperty& property : selected.properties) {
        I18NString read;
        I18NString const& value = readValue(place, object, property, read);
        if (!value.empty() && property.isXmlName && !isWithheld(property, value)) {
            nextValue(property.name) = value;
        }
    }
    return m_attributeCount != 0;
}

I18NString const& VexMDMaTreeWriter::readValue(VexTreePlace const& place, Object& object,
                                               VexSelectedProperty& property, I18NString& value) {
    using Kind = VexSelectedProperty::Kind;
    switch (property.kind) {
    case Kind::Path:
        if (!place.isStart) {
            object.extendPath(m_paths);
        }
        m_paths.show(object.texts.path, value);
        break;
    case Kind::Reference:
        if (!m_pathHoldsElement && !place.isStart) {
            object.putRecordInFront(m_references);
        }
        if (object.texts.searched) {
            GetReferenceForElement(m_context.model, object.texts.records, value);
        } else {
            m_references.show(object.texts.reference, value);
        }
        break;
    case Kind::Name:
        readName(object);
        return object.name;
    case Kind::ScreenText:
    case Kind::Plain:
        readProperty(object.handle, property.name, value);
        break;
    }
    return value;
}

void VexMDMaTreeWriter::readName(Object& object) {
    if (!object.isNameRead) {
        readProperty(object.handle, nameKey(), object.name);
        object.isNameRead = true;
    }
}

I18NString& VexMDMaTreeWriter::nameKey() {
    I18NString const& key = resources::getString(resources::Name);
    if (m_nameKey != key) {
        m_nameKey = key;
    }
    return m_nameKey;
}

bool VexMDMaTreeWriter::isWithheld(VexSelectedProperty const& property,
                                   I18NString const& value) const {
    // quirk: only-the-first-constraint-withholds
    // Constraints are gone through in key order, and each that does not differ
    // sets the attribute: so only a first one that differs withholds it. Kept
    // on purpose.
    auto const first = m_constraints.begin();
    return first != m_constraints.end() && first->first == property.name && first->second != value;
}

I18NString& VexMDMaTreeWriter::nextValue(I18NString const& name) {
    if (m_attributeCount == m_attributes.size()) {
        m_attributes.emplace_back();
    }
    Attribute& attribute = m_attributes[m_attributeCount++];
    attribute.name = &name;
    return attribute.value;
}

void VexMDMaTreeWriter::readProperty(VEX_HANDLE object, I18NString& name, I18NString& value) const {
    VexMDMaProviderUtility::GetStringPropertyValue(object, name, value, m_context.model.locale);
}

VexPropertySelection VexMDMaTreeWriter::attributesOf(VEX_HANDLE object) {
    Vex_Handle_Collection properties;
    VexMDMaProviderUtility::Properties(object, properties, nullptr, nullptr, false);
    std::list<I18NString> names;
    ListAttributes(properties, names);
    return VexPropertySelection(names);
}
