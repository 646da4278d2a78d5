#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Reads one folder, not those in it. Each call may block for as long as the file system likes.
class FolderLister {
public:
    /// Tells a folder from all others, whichever way leads to it.
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t node = 0;
        bool operator==(const Identity&) const = default;
    };

    /// Takes what a folder holds. To answer false ends the listing.
    class Visitor {
    public:
        virtual bool enter(const Identity& identity) = 0;
        virtual bool folder(std::string_view name) = 0;
        /// @param modificationTime  seconds since 1970
        virtual bool file(std::string_view name, std::uint64_t modificationTime) = 0;
        /// A link, which hasn't been followed yet.
        virtual bool link(std::string_view name) = 0;

    protected:
        ~Visitor() = default;
    };

    virtual ~FolderLister() = default;

    /// Calls `enter`, and then the visitor once for each folder, for each file whose name ends in
    /// `extension`, in whatever letter case, with something before it, and for each link, in no order. What
    /// is hidden, by a
    /// "." at the front, is left out. Nothing is called if the folder can't be opened. Thread: any but audio.
    virtual void list(const std::string& path, std::string_view extension, Visitor& visitor) const;
    /// Follows one link, to a folder or to a file of that extension, and tells of it as above.
    virtual void follow(const std::string& path, std::string_view name, std::string_view extension,
                        Visitor& visitor) const;
};
