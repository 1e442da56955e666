// nmkSearchNodeVerifier.h: which nodes a route may pass.
#pragma once

#include <nmktoolbox/export.h>

class nmkSearchNode;

/// What a verifier says of a node. A search takes any other value for refused_for_this_parent.
enum class nmkSearchNodeVerifierResult : int {
    accepted = 0,
    refused_for_good = 1,        // the place is closed and never tried again
    refused_for_this_parent = 2  // the place may still be reached through another parent
};

class NMKTOOLBOX_EXPORT nmkSearchNodeVerifier {
  public:
    /// Whether the step from `parent` to `node` may be taken.
    ///
    /// For a node without a parent, `parent` refers to an object that stands for none and is of no
    /// kind that a caller knows: an implementation must not touch it unless it knows that the node
    /// is not a root.
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
