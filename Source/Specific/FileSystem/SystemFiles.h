#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>

/// Files and folders by paths of the system's own: nothing in them is replaced or translated. On
/// Windows they are UTF-8, with three bytes for half of a surrogate pair, separated by either
/// slash, and may be longer than 260 characters.
///
/// Nothing is thrown, except that memory may run out. Errors are told in words, such as "Permission
/// denied"; none is an empty text.
namespace filesystem
{

/// What stands between the parts of a path that is made.
constexpr char SystemSeparator = static_cast<char>(std::filesystem::path::preferred_separator);

constexpr bool IsSystemSeparator(char c)
{
    constexpr std::string_view separators = SystemSeparator == '/' ? "/" : "/\\";
    return separators.find(c) != std::string_view::npos;
}

/// Returns where the last part of a path begins: after the last separator, or after the drive.
std::size_t GetNameStart(const std::string& path);

/// Returns the folder of a path, without separators at its end but for the root.
std::string GetFolder(const std::string& path);

/// Returns a name from its last dot on, or nothing when there is none but as its first character.
std::string GetExtension(const std::string& name);

enum class EPathKind
{
    Unknown, ///< cannot be told: see the error
    Denied,  ///< cannot be told, since a folder on the way may not be searched
    Absent,
    File,
    Folder,
    Link,  ///< only where links are not followed
    Other, ///< device, pipe, ...
};

/// What is at a path.
struct SPathStatus
{
    EPathKind kind = EPathKind::Unknown;
    std::int64_t size = 0;    ///< in bytes, of a file
    std::uint64_t device = 0; ///< of a file or folder, which two paths share if both numbers
    std::uint64_t inode = 0;  ///< are equal
    std::string error = {};
};

/// Tells what is at a path, or where a link there leads.
SPathStatus GetPathStatus(const std::string& path);

/// Tells what is at a path, which may be a link, also one that leads nowhere.
EPathKind GetLinkKind(const std::string& path);

inline bool IsFolder(const std::string& path)
{
    return GetPathStatus(path).kind == EPathKind::Folder;
}

/// Tells whether two paths lead to one file or folder.
bool IsSameFile(const std::string& path, const std::string& other);

/// Where a file is or would be made: its folder and its name there. Two paths have the same place
/// if they name the same entry of a folder, by whatever way.
struct SPlace
{
    std::uint64_t device = 0; ///< of the folder
    std::uint64_t inode = 0;  ///< of the folder
    std::string name;         ///< or the path, where there is no such folder

    friend bool operator<(const SPlace& a, const SPlace& b)
    {
        return std::tie(a.device, a.inode, a.name) < std::tie(b.device, b.inode, b.name);
    }
    friend bool operator==(const SPlace& a, const SPlace& b)
    {
        return std::tie(a.device, a.inode, a.name) == std::tie(b.device, b.inode, b.name);
    }
};

SPlace GetPlace(const std::string& path);

/// Tells whether a path leads to a folder or to something below it, or would if it existed.
bool IsInFolder(const std::string& path, const std::string& folder);

/// Replaces a path by one without links. Returns the error, with which the path is empty.
std::string ResolveLinks(std::string& path);

/// What is in a folder.
struct SFolderEntry
{
    std::string name;
    bool isFolder = false; ///< or a link to one
    bool isLink = false;
};

/// Calls a function with each entry of a folder until it returns false. Returns the error.
std::string
ReadFolder(const std::string& path, const std::function<bool(const SFolderEntry& entry)>& use);

/// Creates a folder and those above it that are missing. Returns the error.
std::string CreateFolders(const std::string& path);

/// Gives a file another name, in place of a file that has it. Returns the error.
std::string RenameFile(const std::string& from, const std::string& to);

/// Deletes a file. False when it cannot be.
bool RemoveFile(const std::string& path);

} // namespace filesystem
