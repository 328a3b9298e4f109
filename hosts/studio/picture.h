// The picture that the studio works on: the view that shows it, called by the names of its members.
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSize>
#include <QVariant>

#include "members.h"
#include "pixvane_widget.h"

namespace studio {

class Picture : public QObject {
    Q_OBJECT

public:
    explicit Picture(PixvaneWidget& view, QObject* parent = nullptr) : QObject(parent), view_(view) {}

    PixvaneWidget& view() { return view_; }

    /// Calls a member; invalid if it gives nothing.
    QVariant call(const Member& member, const QVariantList& values = {}) {
        return view_.invoke(QString::fromLatin1(member.name), values);
    }

    bool is_empty() const { return view_.IsEmpty(); }
    QSize size() const { return {view_.ImageWidth(), view_.ImageHeight()}; }
    double megapixels() const { return 1e-6 * view_.ImageWidth() * view_.ImageHeight(); }

    /// Says that pixels, history or the file have changed, in whatever way.
    void announce() { emit changed(); }

signals:
    void changed();

private:
    PixvaneWidget& view_;
};

}  // namespace studio
