// The control's macros: recording, files, replay.
// SPDX-License-Identifier: MIT
#include <string>
#include <utility>
#include <vector>

#include "control/cpixvane.h"
#include "control/member_table.h"
#include "control/step_codec.h"
#include "macros/macro_file.h"
#include "macros/player.h"

namespace pixvane {
namespace {

/// Applies steps by the rows that play them: without checks of settings, without recording or repainting.
class TableSink final : public StepSink {
public:
    explicit TableSink(CPixvane& control) : control_(control) {}

    bool apply(std::int32_t code, StepReader& arguments) override {
        const Row* row = find_step(code);
        if (row == nullptr) return true;
        if (!read_step(*row, arguments, step_)) return false;
        if (row->apply != nullptr) row->apply(*row, control_, step_.values);
        return true;
    }

private:
    CPixvane& control_;
    StepArguments step_;
};

/// Puts the drawing settings back at its end, however the run ended.
class SettingsScope {
public:
    explicit SettingsScope(CPixvane& control) : control_(control), before_(control.settings()) {}
    ~SettingsScope() {
        DrawSettings& settings = control_.settings();
        std::swap(settings, before_);
        // Some come back only from within their range; else what the macro has set stays.
        for (const Row& row : setting_table()) {
            if (!row.rules.comesBackChecked) continue;
            if (accepts_setting(row, control_, row.currentThunk(row, control_, {}).value)) continue;
            std::swap(settings, before_);
            const Result played = row.currentThunk(row, control_, {});
            std::swap(settings, before_);
            row.apply(row, control_, {&played.value, 1});
        }
    }
    SettingsScope(const SettingsScope&) = delete;
    SettingsScope& operator=(const SettingsScope&) = delete;

private:
    CPixvane& control_;
    DrawSettings before_;
};

class FlagScope {
public:
    explicit FlagScope(bool& flag) : flag_(flag) { flag_ = true; }
    ~FlagScope() { flag_ = false; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& flag_;
};

}  // namespace

void CPixvane::append_step(const Row& row, std::span<const Value> arguments) {
    StepWriter writer;
    write_step(row, arguments, writer);
    macro_.append(row.macroCode, writer.bytes());
}

void CPixvane::BeginMacros() {
    if (playingMacro_) return;
    macro_.clear();
    recording_ = true;
    for (const Row& row : setting_table()) row.snapshot(row, *this);
}

bool CPixvane::SaveMacros(std::string_view path) {
    if (macro_.codes().empty()) return false;
    return files_.write_whole(std::string(path), encode_macro(macro_));
}

bool CPixvane::LoadMacros(std::string_view path) {
    if (playingMacro_) return false;
    macro_.clear();
    ByteBuffer file;
    return files_.read(std::string(path), file) && decode_macro(file, macro_);
}

void CPixvane::PlayMacros() {
    if (store_.is_empty() || playingMacro_) return;
    end_preview();
    {
        const SettingsScope settings(*this);
        // The script must stay as it is under the player, whoever calls back.
        const FlagScope playing(playingMacro_);
        TableSink sink(*this);
        play(macro_, sink);
    }
    Repaint();
}

}  // namespace pixvane
