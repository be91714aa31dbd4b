#include "host/store/build/StoreBuilder.h"
#include "host/store/image/TextHash.h"

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

void indexIds(StoreData& store, std::size_t count) {
    std::uint64_t const seed = hashSeed();
    store.ids.reserve(count);
    for (ElementNumber element = 0; element < store.elementCount(); ++element) {
        TextRef const id = store.ownText(element, Own::Id);
        if (id != 0) {
            store.ids.add(hashText(store.texts.view(id), seed), element);
        }
    }
}

// Texts are kept once, so that equal names lie in one place.
bool haveOneReference(StoreData const& store, ElementNumber a, ElementNumber b) {
    if (store.nameOf(a) != store.nameOf(b)) {
        return false;
    }
    std::vector<ElementNumber> const namedByA = store.referenceOf(a);
    std::vector<ElementNumber> const namedByB = store.referenceOf(b);
    return std::equal(namedByA.begin(), namedByA.end(), namedByB.begin(), namedByB.end(),
                      [&](ElementNumber x, ElementNumber y) {
                          return x == y || store.nameOf(x) == store.nameOf(y);
                      });
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
            own[element] = firstReferenceHash(store.texts.view(store.nameOf(element)));
        } else if (before != 0) {
            own[element] = nextReferenceHash(before, store.texts.view(store.nameOf(element)));
        }
        below[element] = store.isLeftOutOfReferences(cls) ? before : own[element];
        referenced += own[element] != 0 ? 1 : 0;
    }
    store.references.reserve(referenced);
    for (ElementNumber element = 0; element < count; ++element) {
        std::uint64_t const hash = own[element];
        auto const names = [&](ElementNumber other) {
            return own[other] == hash && haveOneReference(store, other, element);
        };
        // Of several elements with one reference the first one answers to it.
        if (hash != 0 && store.references.find(hash, names) == NotFound) {
            store.references.add(hash, element);
        }
    }
}

} // namespace

void indexStore(StoreData& store, std::size_t idCount) {
    markOwners(store);
    markFirstsOfClass(store);
    store.classes.build(store.names.size(), store.elementCount(),
                        [&store](ElementNumber element) { return store.classOf(element); });
    indexIds(store, idCount);
    indexReferences(store);
}

} // namespace vex
