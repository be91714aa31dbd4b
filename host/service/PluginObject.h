#pragma once

#include "VexPluginFactory.h"

#include <memory>

namespace vex {

/// A plug-in's object, made by its creator, between the creator's two hooks. Threads:
/// as the object's own.
class PluginObject {
public:
    /// The creator outlives the object. Raises `std::bad_alloc` when none can be made,
    /// and what the hook and the plug-in's constructor raise.
    explicit PluginObject(VexPluginFactory::Creator const& creator);

    VexPluginInterface* operator->() const { return m_plugin.get(); }
    VexPluginInterface* get() const { return m_plugin.get(); }

private:
    class Hooks {
    public:
        explicit Hooks(VexPluginFactory::Creator const& creator);
        ~Hooks();
        Hooks(Hooks const&) = delete;
        Hooks& operator=(Hooks const&) = delete;

    private:
        VexPluginFactory::Creator const& m_creator;
    };

    Hooks m_hooks;
    std::unique_ptr<VexPluginInterface> m_plugin;
};

} // namespace vex
