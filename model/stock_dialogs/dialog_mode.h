// What a dialog is opened for.
#pragma once

enum class DialogMode { add = 0, edit = 1 };
