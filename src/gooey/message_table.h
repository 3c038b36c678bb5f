#pragma once

/// The texts of the interface that are told apart by number.
inline constexpr int MessageCount = 205;

/// Some of the numbers.
enum MessageNumber {
    MsgVersion = 0,
    MsgReleaseDate = 1,
    MsgContinue = 2,
    MsgUnnamed = 4,
    MsgCancel = 5,
    MsgDone = 6,
    MsgErrorTitle = 22,
    MsgNoticeTitle = 23,
    MsgTextureError = 57,
    MsgTextureInUse = 58,
    MsgWarningTitle = 59,
    MsgReadManual = 75,
    MsgDeleteAllTextures = 154,
};

/// The text with this number; numbers that have none, and those beyond the table, give "".
const char* msg(int number);
