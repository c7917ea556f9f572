#pragma once

class QFontMetrics;
class QString;

namespace forms {

// The text on one line, cut to `room` design pixels. A title joins two pieces by a run of blanks,
// and the number behind it is what is looked for: there the piece in front is cut.
QString ElidedLine(const QString& text, const QFontMetrics& metrics, int room);

}  // namespace forms
