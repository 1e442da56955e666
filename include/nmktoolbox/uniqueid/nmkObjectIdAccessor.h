// nmkObjectIdAccessor: what a few trusted classes may do to an identity.
//
// Derive from it to reach the operations.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>

class NMKTOOLBOX_EXPORT nmkObjectIdAccessor {
  public:
    virtual ~nmkObjectIdAccessor();

  protected:
    /// Makes the identifier invalid for all that share it.
    void invalidate(nmkObjectId& object);

    /// Copies `value` into the identifier for all that share it; null or an invalid value makes
    /// them invalid.
    void make_valid(nmkObjectId& object, const nmkUniqueId* value);

    /// Gives the object the identifier of `handle`. Where the session's table has an equal member,
    /// this one takes its place.
    void reseat(nmkObjectId& object, const nmkUniqueIdPtr& handle);
};
