// Live preview: what a command would make of the picture, shown while a dialog is open.
// SPDX-License-Identifier: MIT
#include <utility>

#include "control/cpixvane.h"
#include "control/member_table.h"
#include "core/random.h"

namespace pixvane {
namespace {

/// Keeps an edit out of the history, and gives back the random numbers that it draws.
class Trial {
public:
    explicit Trial(ImageStore& store) : store_(store), random_(thread_random().state()) {
        store_.start_preview();
    }
    ~Trial() {
        store_.finish_preview();
        thread_random().set_state(random_);
    }
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

private:
    ImageStore& store_;
    std::uint32_t random_;
};

}  // namespace

void CPixvane::BeginPreview() {
    end_preview();
    previewIsOpen_ = !store_.is_empty();
    Repaint();
}

void CPixvane::Preview(std::string_view command, Values arguments) {
    if (!previewIsOpen_) return;
    const Row& row = *find_member(command);
    previewed_.emplace(row, arguments);
    {
        const Trial trial(store_);
        row.apply(row, *this, arguments);
    }
    Repaint();
}

void CPixvane::EndPreview(bool apply) {
    if (!previewIsOpen_) return;
    const std::optional<HeldCall> call = std::exchange(previewed_, std::nullopt);
    end_preview();
    if (!apply || !call) return Repaint();
    Result nothing;
    invoke(call->row(), *this, call->arguments(), nothing);
}

void CPixvane::end_preview() {
    previewIsOpen_ = false;
    previewed_.reset();
    store_.drop_preview();
}

}  // namespace pixvane
