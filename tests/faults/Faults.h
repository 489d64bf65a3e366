// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

/// Lets a call of this process into the system fail. It takes the place of the C library's
/// functions where it is linked, and where it is preloaded into another program: that has the plan
/// in the variable FAULTS, as "folder:kind:nth:error:isLasting", and leaves a file "struck" in the
/// folder.
namespace faults {

enum Kind : int { None, Open, Read, Write, Allocation }; // of 64 KiB or more

struct Plan
{
    char folder[256] = ""; ///< the only one whose files count; allocations do after the first one
    int kind = None;
    int nth = 0;       ///< call of the kind that fails, from 1
    int error = 0;     ///< what it says; 0: it does not fail, but moves half of the bytes
    int isLasting = 0; ///< all calls after it fail, too
};

__attribute__((visibility("default"))) void set(const Plan& plan);
/// Whether a call has failed since then.
__attribute__((visibility("default"))) bool hasStruck();

} // namespace faults
