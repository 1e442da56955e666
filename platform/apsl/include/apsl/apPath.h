// apPath.h: a name, and what the file system reports about it.
#pragma once

#include <apsl/apPathName.h>
#include <utils/utExport.h>
#include <utils/utString.h>

class UT_EXPORT apPath {
  public:
    apPath() noexcept = default;
    explicit apPath(apPathName name) : m_name(std::move(name)) {}
    explicit apPath(apString text) : m_name(std::move(text)) {}

    const apPathName& path_name() const noexcept { return m_name; }

    /// A name that can be handed to the file system: not empty, and without a nul inside.
    bool is_valid() const noexcept;

    /// True when something of that name can be reached now, at the end of symlinks too.
    bool exists() const;

    /// The name in the thread's code page, as the file system takes it; null when not valid, or
    /// when the code page lacks a character of it and another file would be meant.
    utString narrow() const;

    friend bool operator==(const apPath&, const apPath&) noexcept = default;

  private:
    apPathName m_name;
};
