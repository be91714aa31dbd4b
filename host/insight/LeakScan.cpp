#include "host/insight/LeakScan.h"

#include "I18NStringIterator.h"
#include "VexObject.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/ReferenceText.h"

#include <algorithm>

namespace vex {

namespace {

/// Where the run of bracketed names that begins at `start` ends: behind its
/// last "]". `start` itself when there is no whole name.
int endOfReference(I18NString const& text, int start) {
    int end = start;
    int at = start;
    while (at < text.length() && text[at] == u'[') {
        do {
            at = text.find(u']', at + 1) + 1;
        } while (at > 0 && at < text.length() && text[at] == u']'); // a doubled one is in the name
        if (at <= 0) {
            return end;
        }
        end = at;
        auto const skipBlanks = [&] {
            while (at < text.length() && I18NCodePointIsWhitespace(text[at])) {
                ++at;
            }
        };
        skipBlanks();
        if (at == text.length() || text[at] != u'.') {
            return end;
        }
        ++at;
        skipBlanks();
    }
    return end;
}

/// The longest reference at the beginning of the names that leads to an object.
NamedObject longestIn(Model const& model, std::vector<std::u16string> names) {
    for (; !names.empty(); names.pop_back()) {
        NamedObject found;
        for (std::u16string const& name : names) {
            appendToReference(found.reference, name);
        }
        found.object = model.GetObjectByReference(found.reference, 0);
        if (found.object.IsNotNull()) {
            return found;
        }
    }
    return {};
}

class LeakScan {
public:
    LeakScan(Model const& model, std::function<bool(VEX_HANDLE)> const& canSee)
        : m_model(model), m_canSee(canSee) {}

    void scanProperties(VEX_HANDLE object, VEX_HANDLE owner) {
        Vex_Handle_Collection properties;
        VexObject(owner).Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            if (VexObject(property).hasChildObjects()) {
                continue; // a collection: its members are objects of their own
            }
            I18NString const name = classOf(property); // of a property: its name
            m_firstOfProperty = m_found.size();
            scanValue(object, name, property);
            for (I18NLocale const& locale : m_model.locales()) {
                scanValue(object, name, VexObject(owner).GetPropertyByName(name, &locale));
            }
            scanProperties(object, property);
        }
    }

    std::vector<Leak> take() { return std::move(m_found); }

private:
    void scanValue(VEX_HANDLE object, I18NString const& property, VEX_HANDLE valueHolder) {
        I18NString text;
        if (!VexObject(valueHolder).GetValue(text, true)) {
            return;
        }
        for (NamedObject& named : objectsNamedIn(m_model, text)) {
            auto const first = m_found.begin() + static_cast<std::ptrdiff_t>(m_firstOfProperty);
            bool const isKnown = std::any_of(
                first, m_found.end(), [&](Leak const& leak) { return leak.named == named.object; });
            if (!isKnown && named.object != object && !m_canSee(named.object)) {
                m_found.push_back({object, property, named.object, std::move(named.reference)});
            }
        }
    }

    Model const& m_model;
    std::function<bool(VEX_HANDLE)> const& m_canSee;
    std::vector<Leak> m_found;
    std::size_t m_firstOfProperty = 0;
};

} // namespace

std::vector<NamedObject> objectsNamedIn(Model const& model, I18NString const& text) {
    std::vector<NamedObject> found;
    for (int at = text.find(u'['); at >= 0;) {
        int const end = endOfReference(text, at);
        std::vector<std::u16string> names;
        if (splitReference(text.substring(at, end - at), names)) {
            NamedObject named = longestIn(model, std::move(names));
            if (named.object.IsNotNull()) {
                found.push_back(std::move(named));
            }
        }
        at = text.find(u'[', std::max(end, at + 1));
    }
    return found;
}

std::vector<Leak> findLeaks(Model const& model, std::vector<VEX_HANDLE> const& visible,
                            std::function<bool(VEX_HANDLE)> const& canSee) {
    LeakScan scan(model, canSee);
    for (VEX_HANDLE const object : visible) {
        scan.scanProperties(object, object);
    }
    return scan.take();
}

} // namespace vex
