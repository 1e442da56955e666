// nmkNMTFile: a file of bytes that keeps a record of its first failure.
#pragma once

#include <stlfile/apINMKFile.h>
#include <utils/utObserverPtr.h>

#pragma GCC visibility push(default)

/// How a file is opened.
enum apNMKMode : int {
    apNMKModeRead = 0,  // an existing file, for reading
    apNMKModeWrite = 1  // makes the file or empties it, for writing and reading back
};

/// What has failed.
enum nmkNMTErr : int {
    nmkNMTErrNone = 0,
    nmkNMTErrWrite = 1  // bytes could not be written, or a position not be reached
};

class nmkNMTFile : public apINMKFile, public utObservable {
  public:
    ~nmkNMTFile() override;

    /// Records a failure; a later one is not recorded.
    ///
    ///   code   the operating system's number of the failure, 0 where it is not known
    ///   error  what has failed
    virtual void set_error(int code, nmkNMTErr error);

    /// The failure that was recorded; nmkNMTErrNone and 0 where there is none.
    nmkNMTErr error() const noexcept { return m_error; }
    int error_code() const noexcept { return m_code; }

  private:
    nmkNMTErr m_error = nmkNMTErrNone;
    int m_code = 0;
};

#pragma GCC visibility pop
