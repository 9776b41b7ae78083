#include "platform/ui/qt/widgets/DisplayText.h"

#include <algorithm>

namespace vintrace::qt {
namespace {

bool BreaksLine(QChar character) {
  const QChar::Category category = character.category();
  return category == QChar::Other_Control || category == QChar::Separator_Line ||
         category == QChar::Separator_Paragraph;
}

bool TurnsDirection(QChar character) {
  const char16_t code = character.unicode();
  return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

QString DisplayText(std::string_view bytes) {
  QString text = DisplayLines(bytes);
  return text.replace(QChar::LineFeed, QChar(QChar::ReplacementCharacter));
}

QString DisplayLines(std::string_view bytes) {
  QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  std::replace_if(
      text.begin(), text.end(),
      [](QChar character) {
        return character != QChar::LineFeed && (BreaksLine(character) || TurnsDirection(character));
      },
      QChar(QChar::ReplacementCharacter));
  return text;
}

QString ToolTipText(const QString& text) { return "<qt>" + text.toHtmlEscaped() + "</qt>"; }

}  // namespace vintrace::qt
