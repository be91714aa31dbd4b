#include "host/service/PluginObject.h"

#include "KRLPluginCreator.h"

#include <new>

namespace vex {

PluginObject::Hooks::Hooks(VexPluginFactory::Creator const& creator) : m_creator(creator) {
    if (m_creator.initialize() != nullptr) {
        m_creator.initialize()();
    }
}

PluginObject::Hooks::~Hooks() {
    if (m_creator.terminate() != nullptr) {
        m_creator.terminate()();
    }
}

PluginObject::PluginObject(VexPluginFactory::Creator const& creator)
    : m_hooks(creator), m_plugin(creator.create()) {
    if (m_plugin == nullptr) {
        throw std::bad_alloc();
    }
}

} // namespace vex
