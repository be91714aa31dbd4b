#pragma once

#include "I18NLocale.h"
#include "host/service/ObjectName.h"
#include "host/store/image/Model.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vex {

/// An element's class and id; "" for what it lacks. Its name: `nameIn`.
I18NString classOf(VEX_HANDLE object);
I18NString idOf(VEX_HANDLE object);

/// The nearest namespace that an element stands in; null outside of all.
VEX_HANDLE namespaceAround(VEX_HANDLE object);

/// The namespace around an element, itself counting, that stands in no other
/// one; null outside of all.
VEX_HANDLE outermostNamespaceOf(VEX_HANDLE object);

/// What a shortcut stands for when it is written: the last of its targets
/// decides. The null handle when it has none.
VEX_HANDLE targetOf(Model const& model, VEX_HANDLE shortcut);

/// What people and programs know an element by; "" for what it lacks. Plain
/// data: the model may go.
struct ObjectLabel {
    std::string id;
    std::string reference;
    std::string className;
    std::string name;               // in one language
    DocumentPosition position = {}; // where the model was loaded with positions

    /// The id, else the reference.
    std::string const& key() const { return id.empty() ? reference : id; }
    /// The memory that it takes, about.
    std::size_t byteCount() const {
        return sizeof *this + id.size() + reference.size() + className.size() + name.size();
    }
};
ObjectLabel labelOf(Model const& model, VEX_HANDLE object, I18NLocale const& locale);

/// Those of several elements; what they hold is charged to the call's `Budget`.
std::vector<ObjectLabel> labelsOf(Model const& model, std::vector<VEX_HANDLE> const& objects,
                                  I18NLocale const& locale);

/// An element for people: class, name and, in brackets, its id.
std::string describeObject(ObjectLabel const& label);
std::string describeObject(VEX_HANDLE object, I18NLocale const& locale);

/// The same without the class: "v2 Clerks".
std::string idAndName(VEX_HANDLE object, I18NLocale const& locale);

/// The id, else the reference, else "": what `HostSession::findObject` finds it
/// by.
I18NString keyOf(Model const& model, VEX_HANDLE object);

} // namespace vex
