#pragma once
// File helpers. All swallow failures and return false or an empty text.

#include <QString>

namespace Tarnby
{

bool FileExists(const QString &path);
bool FolderExists(const QString &path);
bool CreateFolder(const QString &path);
bool DeleteFolderTree(const QString &path);
// Deletes every file directly in the folder; sub-folders stay.
void EmptyFolder(const QString &path);
// The whole file as text (UTF-8; a file that is not valid UTF-8 is read as Latin-1).
QString ReadFile(const QString &path);
// Replaces the file whole: written beside it and renamed over it, so a reader never
// sees half a file.
bool WriteFileAtomic(const QString &path, const QString &text);
bool DeleteFile(const QString &path);
bool RenameFile(const QString &oldPath, const QString &newPath);
// Last-write time as local date-and-time text, empty when the file is missing.
QString FhFileLastModified(const QString &path);
// Copies a tree; mask is a wildcard for file names ("*.*" takes all). Existing files
// are replaced. onEachFile is called after each file (progress, event pumping).
bool CopyTree(const QString &source, const QString &target,
              const QString &mask = QStringLiteral("*.*"), void (*onEachFile)() = nullptr);

} // namespace Tarnby
