// nmkMachinableComponentPtr: a component as an element of containers, with its set.
//
// Components are borrowed, and compared by their address.
#pragma once

#include <ncamcontainer/coSet.h>
#include <nmktoolbox/export.h>

class nmkMachinableComponent;

class NMKTOOLBOX_EXPORT nmkMachinableComponentPtr {
  public:
    nmkMachinableComponentPtr() noexcept = default;
    nmkMachinableComponentPtr(nmkMachinableComponent* component) noexcept
        : m_component(component) {}

    /// Refers to another component from now on, and returns it.
    nmkMachinableComponent* operator=(nmkMachinableComponent* component) noexcept {
        m_component = component;
        return m_component;
    }

    /// The component, or null.
    nmkMachinableComponent* operator()() const noexcept { return m_component; }

    bool operator==(const nmkMachinableComponentPtr& other) const noexcept {
        return m_component == other.m_component;
    }

  private:
    nmkMachinableComponent* m_component = nullptr;
};

/// The hash of the address for sets.
NMKTOOLBOX_EXPORT unsigned int co_hash(const nmkMachinableComponentPtr& component);

using nmkMachinableComponentPtrcoSet = coSet<nmkMachinableComponentPtr>;

// Compiled once, in this library, which exports it.
extern template class NMKTOOLBOX_EXPORT coSet<nmkMachinableComponentPtr>;
