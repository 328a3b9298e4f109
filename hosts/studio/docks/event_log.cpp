// Lists the events of the control as they fire.
// SPDX-License-Identifier: MIT
#include "docks/event_log.h"

#include <QStringList>
#include <QTime>
#include <QVBoxLayout>

#include "value_text.h"

namespace studio {
namespace {

constexpr int kMostLines = 500;

}  // namespace

EventLog::EventLog(Picture& picture, QWidget* parent)
    : QWidget(parent), picture_(picture), list_(new QListWidget) {
    list_->setAccessibleName(tr("Events"));
    list_->setUniformItemSizes(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    // Its panel may be as low as a person likes.
    list_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    list_->setFrameShape(QFrame::NoFrame);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(list_);
}

EventLog::~EventLog() { listen(false); }

void EventLog::showEvent(QShowEvent*) { listen(true); }
void EventLog::hideEvent(QHideEvent*) { listen(false); }

void EventLog::listen(bool on) {
    if (on != subscriptions_.empty()) return;
    if (!on) {
        for (const Subscription& subscription : subscriptions_)
            pixvane_unsubscribe(picture_.view().control(), subscription.id);
        return subscriptions_.clear();
    }
    for (const Member* event : events()) {
        Subscription& subscription = subscriptions_.emplace_back(Subscription{this, event, 0});
        pixvane_subscribe(picture_.view().control(), event->name, take, &subscription, &subscription.id);
    }
}

void EventLog::take(void* user, const pixvane_value* arguments, std::size_t count) {
    const auto& subscription = *static_cast<const Subscription*>(user);
    QStringList texts;
    for (std::size_t i = 0; i < count; ++i) texts.append(text_of(arguments[i]));
    subscription.log->note(*subscription.event, texts.join(QStringLiteral(", ")));
}

void EventLog::note(const Member& event, const QString& arguments) {
    repeats_ = &event == lastEvent_ ? repeats_ + 1 : 1;
    lastEvent_ = &event;
    QString line = QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")) + QStringLiteral("   ") +
                   QString::fromLatin1(event.name) + QLatin1Char('(') + arguments + QLatin1Char(')');
    if (repeats_ > 1) {
        line += QStringLiteral("   ×%1").arg(repeats_);
        list_->item(list_->count() - 1)->setText(line);
    } else {
        list_->addItem(line);
        if (list_->count() > kMostLines) delete list_->takeItem(0);
    }
    list_->scrollToBottom();
}

}  // namespace studio
