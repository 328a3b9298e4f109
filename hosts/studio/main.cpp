// The desktop program: pixvane-studio [PICTURE].
// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QCommandLineParser>

#include "main_window.h"
#include "measure.h"

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QApplication::setApplicationName(QStringLiteral("pixvane-studio"));
    QApplication::setApplicationDisplayName(QApplication::translate("main", "Pixvane Studio"));
    QApplication::setOrganizationName(QStringLiteral("Pixvane"));
    QApplication::setApplicationVersion(QString::fromLatin1(pixvane_version()));
    QApplication::setDesktopFileName(QStringLiteral("org.pixvane.Studio"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate("main", "Opens, edits and saves pictures."));
    parser.addPositionalArgument(QStringLiteral("picture"),
                                 QApplication::translate("main", "The picture to open."),
                                 QStringLiteral("[PICTURE]"));
    const QCommandLineOption measureStart(
        QStringLiteral("measure-start"),
        QApplication::translate("main", "Print how soon the picture is seen, and quit."));
    const QCommandLineOption measureDrag(
        QStringLiteral("measure-drag"),
        QApplication::translate("main", "Print also how many frames a second a drag gets, and quit."));
    parser.addOptions({measureStart, measureDrag});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
    if (parser.positionalArguments().size() > 1) {
        std::fprintf(stderr, "pixvane-studio: one picture at a time\n");
        return 2;
    }

    studio::MainWindow window;
    if (!parser.positionalArguments().isEmpty()) {
        window.open_when_seen(parser.positionalArguments().front());
        if (parser.isSet(measureStart) || parser.isSet(measureDrag))
            studio::measure_start(window, parser.isSet(measureDrag));
    }
    window.show();
    return QApplication::exec();
}
