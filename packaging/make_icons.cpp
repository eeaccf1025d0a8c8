// Writes the program's icon as an icon theme keeps it: make_icons FOLDER.

#include <QDir>
#include <QSaveFile>
#include <cstdlib>
#include <iostream>

#include "widgets/Emblem.h"

namespace {

// The folder of the icons of one size, made; empty when it can't be.
QString SizeFolder(const QString& theme, const QString& size) {
  const QString folder = theme + '/' + size + "/apps";
  return QDir().mkpath(folder) ? folder : QString();
}

bool WritePictures(const QString& theme) {
  for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
    if (!corvane::ProgramPicture(side).save(SizeFolder(theme, QString("%1x%1").arg(side)) + "/corvane.png"))
      return false;
  return true;
}

bool WriteDrawing(const QString& theme) {
  QSaveFile file(SizeFolder(theme, "scalable") + "/corvane.svg");
  return file.open(QIODevice::WriteOnly) && file.write(corvane::ProgramDrawing().toLatin1()) > 0 &&
         file.commit();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  const QString theme = QFile::decodeName(argv[1]);
  if (WritePictures(theme) && WriteDrawing(theme)) return EXIT_SUCCESS;
  std::cerr << "cannot write the icons into " << argv[1] << '\n';
  return EXIT_FAILURE;
}
