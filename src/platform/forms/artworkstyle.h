#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace forms {

// Resolves the style classes of a drawing into plain attributes, so that what is painted does not
// depend on how much of CSS the toolkit's renderer knows. `sheets` is one text; of two rules that
// set the same property the later one wins, whatever their selectors.
//
// Understood: selectors of an element name and classes (`text`, `.botao`, `rect.botao.fundo`),
// several with commas; `:root { --name: value }` and `var(--name)`; a `style` attribute, which wins
// over the sheets. An element with `display: none` is left out. Throws Erro 481 when the drawing or
// a sheet can't be read; the description says where.
QByteArray ResolveStyles(const QByteArray& svg, const QString& sheets);

// What a sheet sets in `:root`, by name with its two hyphens.
QMap<QString, QString> StyleVariables(const QString& sheet);

}  // namespace forms
