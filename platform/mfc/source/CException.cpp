#include <mfc/CException.h>

#include <cerrno>
#include <cstdio>

CException::~CException() = default;

CRuntimeClass* CException::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* CException::GetThisClass() {
    static CRuntimeClass of_this = {"CException", sizeof(CException), CObject::GetThisClass()};
    return &of_this;
}

CRuntimeClass* CException::_GetBaseClass() { return CObject::GetThisClass(); }

int CException::GetErrorMessage(char* buffer, unsigned int size, unsigned int* help_context) {
    if (help_context != nullptr) *help_context = 0;
    if (buffer == nullptr || size == 0) return 0;
    std::snprintf(buffer, size, "%s", what());
    return 1;
}

const char* CException::what() const noexcept { return "An unspecified exception was thrown."; }

void CException::Delete() { delete this; }

CRuntimeClass* CArchiveException::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* CArchiveException::GetThisClass() {
    static CRuntimeClass of_this = {"CArchiveException", sizeof(CArchiveException),
                                    CException::GetThisClass()};
    return &of_this;
}

CRuntimeClass* CArchiveException::_GetBaseClass() { return CException::GetThisClass(); }

const char* CArchiveException::what() const noexcept {
    switch (m_cause) {
        case none:
            return "No error occurred.";
        case generic:
            return "The archive could not be read or written.";
        case readOnly:
            return "The archive is loading; writing to it is an error.";
        case endOfFile:
            return "The archive ends too early.";
        case writeOnly:
            return "The archive is storing; reading from it is an error.";
        case badIndex:
            return "The archive holds an invalid form or identifier.";
        case badClass:
            return "The archive holds an unknown class, or not the expected one.";
        case badSchema:
            return "The archive holds a schema that its class does not read.";
    }
    return "The archive could not be read or written.";
}

CFileException CFileException::from_os_error(int os_error) noexcept {
    switch (os_error) {
        case 0:
            return CFileException(none);
        case ENOENT:
            return CFileException(fileNotFound, os_error);
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP:
            return CFileException(badPath, os_error);
        case EMFILE:
        case ENFILE:
            return CFileException(tooManyOpenFiles, os_error);
        case EACCES:
        case EPERM:
        case EISDIR:
        case EROFS:
            return CFileException(accessDenied, os_error);
        case EBADF:
            return CFileException(invalidFile, os_error);
        case EINVAL:
        case ESPIPE:
            return CFileException(badSeek, os_error);
        case EIO:
            return CFileException(hardIO, os_error);
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return CFileException(diskFull, os_error);
        default:
            return CFileException(genericException, os_error);
    }
}

CRuntimeClass* CFileException::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* CFileException::GetThisClass() {
    static CRuntimeClass of_this = {"CFileException", sizeof(CFileException),
                                    CException::GetThisClass()};
    return &of_this;
}

CRuntimeClass* CFileException::_GetBaseClass() { return CException::GetThisClass(); }

const char* CFileException::what() const noexcept {
    switch (m_cause) {
        case none:
            return "No error occurred.";
        case genericException:
            return "The file could not be read or written.";
        case fileNotFound:
            return "The file was not found.";
        case badPath:
            return "The file name is not valid.";
        case tooManyOpenFiles:
            return "Too many files are open.";
        case accessDenied:
            return "Access to the file was denied.";
        case invalidFile:
            return "The file is not open.";
        case badSeek:
            return "The file cannot be positioned there.";
        case hardIO:
            return "The device reported an error.";
        case diskFull:
            return "The disk is full.";
    }
    return "The file could not be read or written.";
}
