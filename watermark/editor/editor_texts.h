// The editor's texts, from its own bundle.
#pragma once

#include "platform/foundation/CFBase.h"
#include "watermark/type42/font_refusal.h"

#include <QString>

inline constexpr char kEditorIdentifier[] = "com.tavro.print.watermarkeditor";

/// The text of a key; a key without one shows as "STRING NOT FOUND".
QString EditorText(const char* key);

/// The key of the sentence that says why a font cannot be embedded. Not for FontRefusal::none.
const char* RefusalKey(FontRefusal refusal);
