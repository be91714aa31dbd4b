#include "host/import/cube/CubeSpread.h"

#include "host/import/cube/SqlNames.h"
#include "host/import/draft/ImportWork.h"

#include <algorithm>
#include <map>
#include <set>

namespace vex {

CubeSpread::CubeSpread(CubeModel const& model, ImportWork& work)
    : m_model(model), m_work(work), m_reads(model.parts.size()), m_readers(model.parts.size()),
      m_isOpaque(model.parts.size()) {
    readCubes();
    for (CubeThing const& thing : model.things) {
        if (thing.isView) {
            readView(thing);
        }
    }
    for (std::size_t part = 0; part < m_reads.size(); ++part) {
        std::sort(m_reads[part].begin(), m_reads[part].end());
        m_reads[part].erase(std::unique(m_reads[part].begin(), m_reads[part].end()),
                            m_reads[part].end());
        for (std::size_t const named : m_reads[part]) {
            m_readers[named].push_back(part);
        }
    }
}

void CubeSpread::readCubes() {
    for (std::size_t part = 0; part < m_model.parts.size(); ++part) {
        m_isOpaque[part] = m_model.parts[part].isOpaque;
        for (std::vector<std::string> const& name : namesInCubeSql(m_model.parts[part].sql)) {
            follow(name, part);
        }
    }
}

/// Each word counts as whatever it may be: a cube, whose members the next ones are, and a
/// member.
void CubeSpread::follow(std::vector<std::string> const& name, std::size_t part) {
    std::size_t const own = m_model.parts[part].owner;
    std::size_t place = own;
    m_work.spendOnViews(name.size());
    for (std::string const& word : name) {
        if (word == "CUBE" || word == "TABLE") {
            place = own;
            continue;
        }
        std::size_t const named = m_model.things[place].find(word);
        if (named != CubePart::None && named != part) {
            m_reads[part].push_back(named);
        }
        if (std::size_t const thing = m_model.findThing(word); thing != CubePart::None) {
            place = thing;
        }
    }
}

void CubeSpread::readView(CubeThing const& view) {
    std::map<std::size_t, std::vector<std::size_t>> members; // by what they stand for
    for (std::size_t const part : view.parts) {
        if (m_model.parts[part].standsFor != CubePart::None) {
            members[m_model.parts[part].standsFor].push_back(part);
        }
    }
    for (auto const& [origin, standing] : members) {
        // What the origin names, through whatever the view does not have itself.
        std::vector<std::size_t> waiting{origin};
        std::set<std::size_t> isKnown{origin};
        std::vector<std::size_t> reads;
        bool isOpaque = false;
        while (!waiting.empty()) {
            std::size_t const part = waiting.back();
            waiting.pop_back();
            isOpaque = isOpaque || m_isOpaque[part];
            m_work.spendOnViews(1 + m_reads[part].size());
            for (std::size_t const named : m_reads[part]) {
                if (!isKnown.insert(named).second) {
                    continue;
                }
                waiting.push_back(named);
                if (auto const found = members.find(named); found != members.end()) {
                    reads.insert(reads.end(), found->second.begin(), found->second.end());
                }
            }
        }
        for (std::size_t const part : standing) {
            m_work.spendOnViews(reads.size());
            m_reads[part].insert(m_reads[part].end(), reads.begin(), reads.end());
            m_isOpaque[part] = m_isOpaque[part] || isOpaque;
        }
    }
}

void CubeSpread::spread(std::vector<bool>& isHidden) const {
    bool const hidesAny = std::find(isHidden.begin(), isHidden.end(), true) != isHidden.end();
    std::vector<std::size_t> waiting;
    for (std::size_t part = 0; part < isHidden.size(); ++part) {
        if (isHidden[part] || (hidesAny && m_isOpaque[part])) {
            isHidden[part] = true;
            waiting.push_back(part);
        }
    }
    while (!waiting.empty()) {
        std::size_t const part = waiting.back();
        waiting.pop_back();
        m_work.spendOnViews(1 + m_readers[part].size());
        for (std::size_t const reader : m_readers[part]) {
            if (!isHidden[reader]) {
                isHidden[reader] = true;
                waiting.push_back(reader);
            }
        }
    }
}

} // namespace vex
