// nmkSearchNodeVerifier.h: which nodes a route may pass.
#pragma once

#include <nmktoolbox/export.h>

class nmkSearchNode;

/// The verdict on a node. A search takes any other value as refused_for_this_parent.
enum class nmkSearchNodeVerifierResult : int {
    accepted = 0,
    refused_for_good = 1,        // the node is closed and never tried again
    refused_for_this_parent = 2  // the node may still be reached through another parent
};

class NMKTOOLBOX_EXPORT nmkSearchNodeVerifier {
  public:
    /// Whether the step from `parent` to `node` may be taken.
    ///
    /// For a node without a parent, `parent` refers to a placeholder of a class that is private
    /// to the library: an implementation must not use it unless it knows that the node is not a
    /// root.
    virtual nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                               const nmkSearchNode& node) const = 0;

    /// Whether `node` is in the region that may be walked at all. The search never asks.
    virtual bool is_in_bounds(const nmkSearchNode& node) const = 0;

    virtual ~nmkSearchNodeVerifier() = 0;

  protected:
    nmkSearchNodeVerifier() = default;
    nmkSearchNodeVerifier(const nmkSearchNodeVerifier&) = default;
    nmkSearchNodeVerifier& operator=(const nmkSearchNodeVerifier&) = default;
};
