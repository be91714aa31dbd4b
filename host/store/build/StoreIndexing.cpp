#include "I18NHash.h"
#include "host/store/build/FixedHashBuilder.h"
#include "host/store/build/StoreBuilder.h"

#include <algorithm>
#include <vector>

namespace vex {

namespace {

void markOwners(StoreData& store) {
    for (ElementNumber element = 0; element < store.elementCount(); ++element) {
        std::uint32_t const last =
            store.elements[element].firstValue + store.shapeOf(element).entryCount;
        while (store.ownerMarks.size() * StoreData::ValuesPerOwnerMark < last) {
            store.ownerMarks.push_back(element);
        }
    }
    store.ownerMarks.shrink();
}

void markFirstsOfClass(StoreData& store) {
    store.firstOfClass.assign(store.elementCount());
    std::vector<ElementNumber> lastParent(store.names.size(), NotFound);
    for (ElementNumber element = 0; element < store.elementCount(); ++element) {
        for (ElementNumber child = element + 1; child < store.elements[element].end;
             child = store.elements[child].end) {
            ElementNumber& seenBelow = lastParent[store.classOf(child)];
            if (seenBelow != element) {
                seenBelow = element;
                store.firstOfClass.set(child);
            }
        }
    }
}

void indexClasses(StoreData& store) {
    std::size_t const classCount = store.names.size();
    CompactArray<std::uint32_t> first; // by class
    first.assign(classCount + 1, 0);
    for (ElementNumber element = 0; element < store.elementCount(); ++element) {
        ++first[store.classOf(element) + 1];
    }
    for (std::size_t cls = 0; cls < classCount; ++cls) {
        first[cls + 1] += first[cls];
    }
    CompactArray<ElementNumber> elements;
    elements.extend(store.elementCount());
    // Each class's start runs to its end while its elements are put in ...
    for (ElementNumber element = 0; element < store.elementCount(); ++element) {
        elements[first[store.classOf(element)]++] = element;
    }
    // ... which is the start of the next one.
    for (std::size_t cls = classCount; cls > 0; --cls) {
        first[cls] = first[cls - 1];
    }
    first[0] = 0;
    first.shrink();
    elements.shrink();
    store.classes = ClassIndex(std::move(first), std::move(elements));
}

void indexIds(StoreData& store, std::size_t count) {
    FixedHashBuilder ids(count);
    for (ElementNumber element = 0; element < store.elementCount(); ++element) {
        TextRef const id = store.ownText(element, Own::Id);
        if (id != 0) {
            ids.add(I18NHashText(store.texts.view(id), store.hashSeed), element);
        }
    }
    store.ids = std::move(ids).finish();
}

void indexReferences(StoreData& store) {
    ElementNumber const count = store.elementCount();
    CompactArray<std::uint64_t> own;   // of the element's reference; 0: it has none
    CompactArray<std::uint64_t> below; // what the references of its children go on from
    own.assign(count, 0);
    below.assign(count, 0);
    std::size_t referenced = 0;
    for (ElementNumber element = 0; element < count; ++element) {
        Atom const cls = store.classOf(element);
        ElementNumber const parent = store.elements[element].parent;
        std::uint64_t const before = parent == NotFound ? 0 : below[parent];
        if (cls == store.namespaceName) {
            own[element] =
                firstReferenceHash(store.texts.view(store.nameOf(element)), store.hashSeed);
        } else if (before != 0) {
            own[element] =
                nextReferenceHash(before, store.texts.view(store.nameOf(element)), store.hashSeed);
        }
        below[element] = store.isLeftOutOfReferences(cls) ? before : own[element];
        referenced += own[element] != 0 ? 1 : 0;
    }
    FixedHashBuilder references(referenced);
    // By element: the first one with the reference that those of its children go on from. So
    // two references are the same when the last names are and these are: texts are kept once,
    // and equal names lie in one place.
    CompactArray<ElementNumber> around;
    around.assign(count, NotFound);
    for (ElementNumber element = 0; element < count; ++element) {
        auto const goesOnFrom = [&](ElementNumber of) {
            return store.classOf(of) == store.namespaceName ? NotFound
                                                            : around[store.elements[of].parent];
        };
        std::uint64_t const hash = own[element];
        ElementNumber first = NotFound;
        if (hash != 0) {
            first = references.table().find(hash, [&](ElementNumber other) {
                return own[other] == hash && store.nameOf(other) == store.nameOf(element) &&
                       goesOnFrom(other) == goesOnFrom(element);
            });
            // Of several elements with one reference the first one answers to it.
            if (first == NotFound) {
                references.add(hash, element);
                first = element;
            }
        }
        around[element] = store.isLeftOutOfReferences(store.classOf(element)) && element != 0
                              ? around[store.elements[element].parent]
                              : first;
    }
    store.references = std::move(references).finish();
}

} // namespace

void indexStore(StoreData& store, std::size_t idCount) {
    markOwners(store);
    markFirstsOfClass(store);
    indexClasses(store);
    indexIds(store, idCount);
    indexReferences(store);
}

} // namespace vex
