#pragma once

#include <string>

/// Creating, deleting and copying folders and files. Where two paths are passed, the destination
/// comes first.
///
/// The platform gives no access to folders, so each function has the fixed result that its comment
/// names. The composite ones are written out all the same, on top of the primitives in
/// FolderPrimitives.cpp, so that putting real primitives there makes them work.
namespace filesystem
{

/// Deletes a file. Always false on this platform, and nothing is deleted.
bool DelFile(const std::string& path);

/// Copies a file. Always true on this platform, and nothing is copied.
bool CopyOneFile(const std::string& dest, const std::string& src);

/// Returns the working folder. Always empty on this platform.
std::string GetCurrentFolderName();

/// Creates a folder and those above it that are missing. Always true on this platform, and nothing
/// is created.
bool CreateFolder(const std::string& path);

/// Deletes the files of a folder, but for hidden and system ones, and stops with false at the first
/// that cannot be deleted. The folder and its sub-folders stay. A sub-folder is left alone unless
/// `CFindFile::GetFileList` lists it too, which has the same done to it. A folder that does not
/// exist is a success: always so on this platform.
bool DeleteFolder(const std::string& path);

/// Copies the sub-folders and files of the folder src into the folder dest, which is created where
/// missing, and stops with false at the first failure. Hidden and system files are not copied,
/// hidden and system folders are. A folder src that does not exist is a failure: always so on this
/// platform.
bool CopyFolder(const std::string& dest, const std::string& src);

} // namespace filesystem
