// nmkRegistry: a session on the registry, which excludes all other sessions of the user.
//
// An object holds the mutex "com.norvex.registry" for its whole life, so that the programs of a
// family change their settings one after the other. Keep it short: other processes wait without a
// limit for as long as it lives. A second object of the same thread gets the mutex as well, one of
// another thread waits until the first is destroyed. One object is for one thread.
//
// The object is invalid if it could not take the mutex, or if the process that held it ended within
// its session while this one waited: what that process left may be half done, and the next object
// is valid. All operations of an invalid object return 1, change nothing and leave the caller's
// variables alone.
//
// It works on one open key at a time, to which subkeys are relative. All results are 0 for success
// and anything else for failure, except that of valid(). "\" separates the keys of a path; names
// ignore the case of ASCII letters. What was changed survives the end of the process at once, and a
// power failure once the object is destroyed.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>
#include <winapi/registry.h>

class NMKTOOLBOX_EXPORT nmkRegistry {
  public:
    /// Waits for the mutex, without a limit.
    nmkRegistry();
    nmkRegistry(const nmkRegistry&) = delete;
    nmkRegistry& operator=(const nmkRegistry&) = delete;
    /// Closes the open key and gives the mutex back.
    ~nmkRegistry();

    /// Non-zero if the mutex is held.
    int valid() const;

    /// Opens a key that exists.
    ///
    ///   root          one of the HKEY_ roots, or an open key
    ///   writable      0 to read values; every other number, also to write them. It is kept for
    ///                 open_subkey, also when the key cannot be opened
    ///   extra_access  rights beside those of reading or writing
    ///   returns       0; 1 if it failed, and then the present key remains open
    int open_key(HKEY root, const utString& path, int writable, int extra_access);

    /// Opens a key below the open one, to read or write as the last open_key was asked; reading
    /// before the first.
    int open_subkey(const utString& path);

    /// Opens a key to read and write, and creates it and its parents if they are missing. The
    /// present key is closed. 1 if it failed: open a key before anything else then.
    int create_key(HKEY root, const utString& path);

    /// The same below the open key. The mode of open_subkey is not changed by either.
    int create_subkey(const utString& path);

    /// Copies the values and subkeys of `from` into `to`, which is created if it is missing and is
    /// the open key afterwards. Same-named values are replaced. 1 if a key is to be copied into
    /// what is below it: nothing is copied then.
    int copy_tree(HKEY root, const utString& from, const utString& to);

    /// Deletes a key that has no subkeys, with its values; 1 if it has some or is missing.
    int delete_key(HKEY root, const utString& path);
    int delete_subkey(const utString& path);

    /// Deletes a key with all that is below it. Returns the error code of the system: 2 if the key
    /// is missing.
    int recursively_delete_key(HKEY root, const utString& path);
    int recursively_delete_subkey(const utString& path);

    /// Reads an integer: the first four bytes of the value, whatever its type; bytes that it does
    /// not have are 0. 1 if the value is missing or cannot be read; `value` stays as it was then.
    int query_value(const utString& name, int& value);

    /// Reads a text: the value up to its first NUL, whatever its type. 1 if the value is missing or
    /// cannot be read; `value` is the empty text then.
    int query_value(const utString& name, utString& value);

    /// Sets an integer (REG_DWORD). The null and the empty name are that of the default value.
    int set_value(const utString& name, int value);

    /// Sets a text (REG_SZ) with its terminator; the null string is stored as the empty text.
    int set_value(const utString& name, const utString& value);

  private:
    /// Reads the bytes of a value into a new buffer, which the caller deletes: null if there are
    /// none. Behind the bytes the buffer has at least one 0, and room for an integer.
    int query_value(const utString& name, unsigned char*& data);
    int set_value(const utString& name, unsigned char* data, unsigned long type,
                  unsigned long size);
    int close_key();

    HKEY m_key = nullptr;     // null if none is open
    void* m_mutex = nullptr;  // a handle; null if the object is invalid
    int m_writable = 0;       // the mode of the last open_key
};
