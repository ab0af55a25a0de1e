#include "core/files.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace Tarnby
{

bool FileExists(const QString &path)
{
    return !path.isEmpty() && QFileInfo(path).isFile();
}

bool FolderExists(const QString &path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

bool CreateFolder(const QString &path)
{
    return !path.isEmpty() && QDir().mkpath(path);
}

bool DeleteFolderTree(const QString &path)
{
    return FolderExists(path) && QDir(path).removeRecursively();
}

void EmptyFolder(const QString &path)
{
    if (!FolderExists(path)) return;
    QDir dir(path);
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names)
        dir.remove(name);
}

QString ReadFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray bytes = file.readAll();
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

bool WriteFileAtomic(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(text.toUtf8());
    return file.commit();
}

bool DeleteFile(const QString &path)
{
    return !path.isEmpty() && QFile::remove(path);
}

bool RenameFile(const QString &oldPath, const QString &newPath)
{
    return !oldPath.isEmpty() && !newPath.isEmpty() && QFile::rename(oldPath, newPath);
}

QString FhFileLastModified(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists()) return {};
    return info.lastModified().toLocalTime().toString(Qt::ISODate);
}

bool CopyTree(const QString &source, const QString &target, const QString &mask,
              void (*onEachFile)())
{
    if (!FolderExists(source) || !CreateFolder(target)) return false;
    const QDir from(source);
    // "*.*" in the profile API's sense means every file, also those without a dot.
    const QStringList filters =
        mask == QStringLiteral("*.*") ? QStringList{QStringLiteral("*")} : QStringList{mask};
    bool ok = true;
    QDirIterator it(source, filters, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        const QString destination = target + QLatin1Char('/') + from.relativeFilePath(file);
        QDir().mkpath(QFileInfo(destination).absolutePath());
        QFile::remove(destination);
        ok = QFile::copy(file, destination) && ok;
        if (onEachFile) onEachFile();
    }
    return ok;
}

} // namespace Tarnby
