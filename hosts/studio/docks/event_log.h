// Lists the events of the control as they fire.
// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QListWidget>
#include <deque>

#include "picture.h"

namespace studio {

/// Listens only while it is seen. An event that fires again and again stays one line, with its last
/// arguments.
class EventLog : public QWidget {
    Q_OBJECT

public:
    explicit EventLog(Picture& picture, QWidget* parent = nullptr);
    ~EventLog() override;

    QSize sizeHint() const override { return {420, 130}; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Subscription {
        EventLog* log;
        const Member* event;
        int id;
    };
    static void take(void* subscription, const pixvane_value* arguments, std::size_t count);
    void note(const Member& event, const QString& arguments);
    void listen(bool on);

    Picture& picture_;
    QListWidget* list_;
    std::deque<Subscription> subscriptions_;  ///< at addresses that stay
    const Member* lastEvent_ = nullptr;
    int repeats_ = 0;
};

}  // namespace studio
