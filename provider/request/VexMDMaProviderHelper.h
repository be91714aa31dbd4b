#pragma once

#include "I18NString.h"
#include "KRLIDOM_Node.h"
#include "provider/request/VexClassRequests.h"

#include <list>
#include <map>

/// A client's request: what its document says, and what that means for one
/// class of objects. The document is read once; afterwards nothing looks at it.
class VexMDMaProviderHelper {
public:
    explicit VexMDMaProviderHelper(KRLIDOM_Node const& node);

    /// Reads the whole document that the node belongs to, not the node's part
    /// alone.
    void ProcessClientRequest();

    /// Reads `node`, everything below it and its following siblings.
    void ProcessNode(KRLIDOM_Node node);

    /// The option of that name; "" when it is absent or empty.
    I18NString GetAttributeValueForAttribute(I18NString const& name) const;

    /// The property requests ("./@A", "*/@A", "C/@A") in document order.
    std::list<I18NString> const& GetAttributeRequests() const { return m_attributeRequests.all(); }

    /// The collection requests ("./C", "*/C", "D/C") in document order.
    std::list<I18NString> const& GetCollectionRequests() const {
        return m_collectionRequests.all();
    }

    /// False when the request says nothing of that class but what it says of every class. True
    /// is no proof of the contrary.
    bool MayNameClass(I18NString const& className) const {
        return !m_attributeRequests.about(className).empty() ||
               !m_collectionRequests.about(className).empty();
    }

    /// Sets `result` to the names of the properties requested for a class: those
    /// of the start object, of every class, of the class; repeats are kept.
    void GetPropertiesForClass(I18NString const& className, std::list<I18NString>& result) const;

    /// Sets `result` to the names of the collections requested for a class, in
    /// the same order, then "shortcut" and "namespace": these two are always
    /// walked, and stand twice when the request names them too.
    void GetCollectionsForClass(I18NString const& className, std::list<I18NString>& result) const;

    /// Sets `result` to the constraints on a class. Here the start object's wins
    /// over every class's, and both over the class's own.
    void GetConstraintsForClass(I18NString const& className,
                                std::map<I18NString, I18NString>& result) const;

    /// Appends what follows `prefix` in the entries that begin with it. A rest
    /// that begins with "*" stands alone for the prefix.
    void ProcessPrefix(std::list<I18NString> const& source, I18NString const& prefix,
                       std::list<I18NString>& result) const;

    /// The same for the keys of a map; the two characters after the prefix are
    /// dropped unchecked, and a key that `result` has keeps its value.
    void ProcessConstraintPrefix(std::map<I18NString, I18NString> const& source,
                                 I18NString const& prefix,
                                 std::map<I18NString, I18NString>& result) const;

private:
    void processAttribute(I18NString const& element, I18NString const& name,
                          I18NString const& value);
    void processElement(KRLIDOM_Node const& element);
    void storeConstraint(I18NString const& text);

    KRLIDOM_Node m_request;
    std::map<I18NString, I18NString> m_options;
    VexClassRequests m_attributeRequests;
    VexClassRequests m_collectionRequests;
    std::map<I18NString, I18NString> m_constraints;
};
