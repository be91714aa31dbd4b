#pragma once

#include "VexObjectModel.h"
#include "VexSession.h"
#include "tests/support/CallCounter.h"
#include "tests/support/TestNode.h"

#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

/// A model for tests: a plain tree that answers every question by looking
/// through it. Counts its calls, fails when told to, and can lose objects.
class TestModel final : public VexObjectModel, public VexObjectStore {
public:
    /// Reads the text of a model document. Raises `KRLDocumentException` when it
    /// is not well-formed; checks nothing else. Attributes become properties in
    /// alphabetical order, `property` elements in document order.
    explicit TestModel(std::string_view xml);
    ~TestModel() override;

    /// The element with that id. Raises `std::invalid_argument` without one.
    VEX_HANDLE byId(char const* id) const;
    Vex_Handle_Collection byIds(std::initializer_list<char const*> ids) const;
    /// The property as the null locale finds it. Raises `std::invalid_argument`
    /// when the object lacks it.
    VEX_HANDLE property(VEX_HANDLE object, char const* name) const;

    /// The object is not valid from now on.
    void invalidate(VEX_HANDLE object);
    /// The element is of another class from now on, of one that no document can hold too;
    /// the collection that it is in keeps its name.
    void setClass(VEX_HANDLE element, char const* className);

    /// From now on the model has every set of texts ready. The sets' own operations are
    /// counted, and fail, as `Call::AskTextSet`.
    void offerTextSets() { m_offersTextSets = true; }

    CallCounter& calls() const { return m_calls; }
    /// The flag that the last `GetValue` was called with.
    bool lastResolve() const { return m_lastResolve; }

    VEX_HANDLE GetRootObject() const override;
    VEX_HANDLE GetObjectByReference(I18NString const& reference, long scope) const override;

    bool IsObject(VEX_HANDLE object) const override;
    bool GetId(VEX_HANDLE object, I18NString& id) const override;
    bool GetName(VEX_HANDLE object, I18NString& name) const override;
    bool GetClass(VEX_HANDLE object, I18NString& name) const override;
    bool GetRole(VEX_HANDLE object, I18NString& role) const override;
    bool GetValue(VEX_HANDLE object, I18NString& value, bool resolve) const override;
    I18NLocale const* GetLocale(VEX_HANDLE object) const override;
    VEX_HANDLE GetParent(VEX_HANDLE object) const override;
    VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                 I18NLocale const* locale) const override;
    VEX_HANDLE GetPropertyByRole(VEX_HANDLE object, I18NString const& role,
                                 I18NLocale const* locale) const override;
    bool Properties(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                    I18NString const* role) const override;
    bool childObjects(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                      I18NString const* role) const override;
    bool getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                              Vex_Handle_Collection& found) const override;
    bool hasChildObjects(VEX_HANDLE object) const override;
    bool hasProperties(VEX_HANDLE object) const override;
    std::shared_ptr<VexTextSet const> FindTextSet(VEX_HANDLE object, I18NString const& within,
                                                  I18NString const& name, I18NString const& text,
                                                  I18NString const& tag) const override;

private:
    TestNode* nodeOf(VEX_HANDLE object) const;
    VEX_HANDLE handleOf(TestNode const* node) const;
    TestNode const* findProperty(TestNode const& owner, I18NString const& name,
                                 I18NLocale const* locale) const;
    TestNode const* chooseValue(std::vector<TestNode*> const& values,
                                I18NLocale const* locale) const;
    bool hasReference(TestNode const& element, std::vector<I18NString> const& names) const;
    I18NString nameOf(TestNode const& element) const;

    std::vector<std::unique_ptr<TestNode>> m_nodes; // the root first
    I18NLocale m_defaultLocale;
    mutable CallCounter m_calls;
    mutable bool m_lastResolve = false;
    bool m_offersTextSets = false;
};
