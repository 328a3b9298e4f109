// The file behind the picture: opened, saved, closed, and not lost by mistake.
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "command_runner.h"

namespace studio {

class Document : public QObject {
    Q_OBJECT

public:
    /// Dialogs belong to `window`.
    Document(CommandRunner& runner, QWidget& window);

    /// Of the file that the picture was read from or saved to last; empty if there is none.
    const QString& path() const { return path_; }
    /// "photo.jpg", or what a picture without a file is called.
    QString title() const;
    bool is_modified() const;

    /// Asks for a picture, and opens it.
    void open();
    /// False if the picture can't be read or a person wants to keep the one that is open.
    bool open(const QString& path);
    /// Each false if nothing was saved.
    bool save();
    bool save_as();
    /// False if a person wants to keep it open.
    bool close();
    /// Asks what to do about unsaved changes; false if what would lose them must not happen.
    bool may_be_left();

signals:
    void opened(const QString& path);
    void failed(const QString& path);
    /// A line for the status bar.
    void told(const QString& line);
    /// The path or the title is another.
    void renamed();

private:
    bool write(const QString& path, int type, int quality);

    CommandRunner& runner_;
    QWidget& window_;
    QString path_;
    int lastQuality_;
};

}  // namespace studio
