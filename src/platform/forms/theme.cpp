#include "platform/forms/theme.h"

#include "platform/forms/font.h"

#include <QApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

Theme& Current() {
    static Theme theme;
    return theme;
}

QPalette PaletteOf(const Theme& theme) {
    QPalette palette(theme.button, theme.window);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, theme.text);
        palette.setColor(QPalette::Disabled, role, theme.disabledText);
    }
    palette.setColor(QPalette::Base, theme.base);
    palette.setColor(QPalette::AlternateBase, theme.window);
    palette.setColor(QPalette::ToolTipBase, theme.tip);
    palette.setColor(QPalette::Highlight, theme.selection);
    palette.setColor(QPalette::HighlightedText, theme.selectionText);
    palette.setColor(QPalette::PlaceholderText, theme.disabledText);
    palette.setColor(QPalette::Link, theme.text);
    return palette;
}

QString SheetOf(const Theme& theme) {
    QString sheet =
        uR"(
QLineEdit {
    background: @base; color: @text; border: 1px solid @border; border-radius: 0; padding: 0 3px;
    selection-background-color: @selection; selection-color: @selectionText;
    lineedit-password-character: 42;
}
QLineEdit:disabled { background: @window; color: @disabledText; }
QLineEdit:focus { border-bottom: 2px solid @focus; padding-top: 1px; }
forms--HelpWindow QTreeWidget { padding: 8px 6px; }
QDialog QLineEdit, forms--HelpWindow QLineEdit { min-height: 19px; }
QAbstractSpinBox QLineEdit, QAbstractSpinBox QLineEdit:focus { border: none; padding: 0; }
forms--BoundGrid { background: @base; border: 1px solid @border; border-top-color: @rowLine; }
forms--BoundGrid:focus { border-color: @focus; }
forms--ComboList {
    background: @base; color: @text; border: 1px solid @border; border-radius: 0;
    padding: 0 0 0 5px; combobox-popup: 0;
    selection-background-color: @selection; selection-color: @selectionText;
}
forms--ComboList:focus { border-bottom: 2px solid @focus; }
forms--ComboList::drop-down { width: 16px; border: none; background: @button; }
forms--ComboList::down-arrow { image: none; }
forms--ComboList QAbstractItemView {
    background: @base; color: @text; border: 1px solid @border; outline: 0;
    selection-background-color: @selection; selection-color: @selectionText;
}
forms--ComboList QAbstractItemView::item { min-height: @rowPixelspx; padding: 0 3px; }
QScrollBar { background: @window; border: none; margin: 0; }
QScrollBar:vertical { width: @scrollPixelspx; }
QScrollBar:horizontal { height: @scrollPixelspx; }
QScrollBar::handle { background: @scrollHandle; border: 2px solid @window; border-radius: 5px; }
QScrollBar::handle:hover, QScrollBar::handle:pressed { background: @focus; }
QScrollBar::handle:vertical { min-height: 24px; }
QScrollBar::handle:horizontal { min-width: 24px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; border: none; }
forms--ScrollBar:horizontal { margin: 0 @scrollButtonPixelspx; }
forms--ScrollBar:vertical { margin: @scrollButtonPixelspx 0; }
forms--ScrollBar::add-line, forms--ScrollBar::sub-line {
    width: @scrollButtonPixelspx; height: @scrollButtonPixelspx; background: @button;
    subcontrol-origin: margin;
}
forms--ScrollBar::add-line:horizontal { subcontrol-position: right; }
forms--ScrollBar::sub-line:horizontal { subcontrol-position: left; }
forms--ScrollBar::add-line:vertical { subcontrol-position: bottom; }
forms--ScrollBar::sub-line:vertical { subcontrol-position: top; }
forms--ScrollBar::add-line:hover, forms--ScrollBar::sub-line:hover { background: @lit; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
QPushButton {
    background: @base; color: @text; border: 1px solid @primary; border-radius: 3px;
    padding: 4px 14px; min-height: 16px;
}
QPushButton:focus { background: @primary; color: @primaryText; }
QPushButton:hover, QPushButton:pressed { background: @lit; border-color: @lit; color: @text; }
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
QToolTip { background: @tip; color: @text; border: 1px solid @border; padding: 2px 4px; }
)"_s;
    // Longer names first: one name may begin with another.
    const std::initializer_list<std::pair<QString, QString>> values = {
        {u"@selectionText"_s, theme.selectionText.name()},
        {u"@selection"_s, theme.selection.name()},
        {u"@scrollHandle"_s, theme.scrollHandle.name()},
        {u"@scrollButtonPixels"_s, QString::number(theme.scrollButtonPixels)},
        {u"@scrollPixels"_s, QString::number(theme.scrollPixels)},
        {u"@rowPixels"_s, QString::number(theme.rowPixels)},
        {u"@disabledText"_s, theme.disabledText.name()},
        {u"@rowLine"_s, theme.rowLine.name()},
        {u"@primaryText"_s, theme.primaryText.name()},
        {u"@primary"_s, theme.primary.name()},
        {u"@border"_s, theme.border.name()},
        {u"@button"_s, theme.button.name()},
        {u"@window"_s, theme.window.name()},
        {u"@focus"_s, theme.focus.name()},
        {u"@base"_s, theme.base.name()},
        {u"@text"_s, theme.text.name()},
        {u"@lit"_s, theme.lit.name()},
        {u"@tip"_s, theme.tip.name()},
    };
    for (const auto& [name, value] : values) {
        sheet.replace(name, value);
    }
    return sheet;
}

}  // namespace

const Theme& CurrentTheme() {
    return Current();
}

void SetTheme(const Theme& theme) {
    Current() = theme;
    QApplication::setPalette(PaletteOf(theme));
    qApp->setStyleSheet(SheetOf(theme));
    // After the sheet, whose first coming gives lists, menus and boxes the system's own fonts back.
    QApplication::setFont(Font(theme.textPixels));
}

}  // namespace forms
