// archive_failure.h: the cause with which work on an archive fails.
#pragma once

#include <mfc/CException.h>

/// The cause of the CArchiveException that `work` throws; none where it throws nothing.
template <class Work>
CArchiveException::Cause cause_of(const Work& work) {
    try {
        work();
    } catch (const CArchiveException& failure) {
        return failure.m_cause;
    }
    return CArchiveException::none;
}
