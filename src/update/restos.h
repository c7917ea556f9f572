#pragma once

#include <QString>

// Files on their way: an update brings everything down before it puts anything in place, under
// names that tell whose they are. What a dead update left behind is known by them.

// A new name in `pasta`, which ends in a backslash.
QString NomeDoRecebido(const QString& pasta);

// Whether a file's name is that of a file on its way or any other temporary one of this system.
bool EhTemporario(const QString& nome);

// Takes away what dead updates left in `pasta`. Only under the update lock: no other update is
// alive then. Other temporary names may belong to a check of another computer, which lives for
// minutes, so they go when they are a day old. What cannot be taken away stays.
void ExcluirRestos(const QString& pasta);
