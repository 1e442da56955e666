// CException.h: the root of the framework's exceptions, and those of files and archives.
//
// Files and archives throw their exceptions by value: catch them by const reference. An exception
// that is thrown as a pointer to a heap object is disposed of by its catcher with Delete().
// Exceptions allocate nothing and can be copied without failing.
#pragma once

#include <mfc/CObject.h>

#include <exception>

#pragma GCC visibility push(default)

class CException : public CObject, public std::exception {
  public:
    CException() = default;
    CException(const CException&) = default;
    CException& operator=(const CException&) = default;
    ~CException() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    /// Writes what(), cut to `size` bytes with its nul, to `buffer`. Returns 1, or 0 where there is
    /// no buffer. A `help_context` that is not null is set to 0.
    virtual int GetErrorMessage(char* buffer, unsigned int size,
                                unsigned int* help_context = nullptr);

    /// One sentence that says what went wrong; a literal.
    const char* what() const noexcept override;

    /// Deletes an exception that was made with new. Not for one that was caught by reference.
    virtual void Delete();
};

/// An archive could not read or write.
class CArchiveException : public CException {
  public:
    enum Cause {
        none,
        generic,
        readOnly,   // writing to an archive that loads
        endOfFile,  // the data end too early
        writeOnly,  // reading from an archive that stores
        badIndex,   // a bad form or identifier
        badClass,   // an unknown class, or not the one asked for
        badSchema   // a schema that the class does not read, or an object that cannot be stored
    };

    explicit CArchiveException(Cause cause = none) noexcept : m_cause(cause) {}

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    const char* what() const noexcept override;

    Cause m_cause;
};

/// A file could not be opened, read, written or positioned.
class CFileException : public CException {
  public:
    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        badSeek,
        hardIO,
        diskFull
    };

    explicit CFileException(Cause cause = none, int os_error = 0) noexcept
        : m_cause(cause), m_lOsError(os_error) {}

    /// The exception for an error number of the system (errno).
    static CFileException from_os_error(int os_error) noexcept;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    const char* what() const noexcept override;

    Cause m_cause;
    int m_lOsError;  // the system's error number, 0 where the system was not asked
};

#pragma GCC visibility pop
