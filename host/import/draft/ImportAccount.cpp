#include "host/import/draft/ImportAccount.h"

#include <utility>

namespace vex {

std::string_view ImportAccount::counted(std::string_view kind) const {
    bool const isNew = m_rows.size() >= MostKinds && !m_rowOfKind.contains(kind);
    return isNew ? std::string_view("other kinds") : kind;
}

ImportAccount::Row& ImportAccount::rowOf(std::string_view kind) {
    auto known = m_rowOfKind.find(kind);
    if (known == m_rowOfKind.end()) {
        known = m_rowOfKind.emplace(std::string(kind), m_rows.size()).first;
        m_rows.push_back({std::string(kind)});
    }
    return m_rows[known->second];
}

void ImportAccount::mapped(std::string_view kind, std::size_t count) {
    Row& row = rowOf(counted(kind));
    row.read += count;
    row.mapped += count;
}

void ImportAccount::leftOut(std::string_view kind, std::string_view reason, Place place,
                            std::size_t count) {
    kind = counted(kind);
    rowOf(kind).read += count;
    std::string key(kind);
    key.append(1, '\0').append(reason);
    auto known = m_omissionOf.find(key);
    if (known == m_omissionOf.end()) {
        known = m_omissionOf.emplace(std::move(key), m_omissions.size()).first;
        m_omissions.push_back({std::string(kind), std::string(reason)});
    }
    Omission& omission = m_omissions[known->second];
    omission.count += count;
    if (omission.places.size() < MostPlaces) {
        place.file = m_file;
        omission.places.push_back(std::move(place));
    }
}

void ImportAccount::note(std::string text, DocumentPosition position) {
    if (m_notes.size() < MostNotes) {
        m_notes.push_back({std::move(text), position, m_file});
    } else {
        ++m_notesLeftOut;
    }
}

std::size_t ImportAccount::readOf(std::string_view kind) const {
    auto const known = m_rowOfKind.find(kind);
    return known == m_rowOfKind.end() ? 0 : m_rows[known->second].read;
}

std::size_t ImportAccount::mappedOf(std::string_view kind) const {
    auto const known = m_rowOfKind.find(kind);
    return known == m_rowOfKind.end() ? 0 : m_rows[known->second].mapped;
}

} // namespace vex
