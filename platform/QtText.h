#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <filesystem>
#include <string>

namespace corvane {

inline QString ToQt(const std::string& text) { return QString::fromStdString(text); }
inline QString ToQt(const std::filesystem::path& path) { return QFile::decodeName(path.c_str()); }
inline std::filesystem::path ToPath(const QString& path) { return QFile::encodeName(path).toStdString(); }

}  // namespace corvane
