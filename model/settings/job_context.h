// Which part of a job a setting belongs to.
#pragma once

/// The values are those of the dialogs' arguments; there is no 1.
enum class JobContext { job = 0, cover = 2, insert = 3, exception = 4 };
