#include "platform/forms/translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

struct Entry {
    QLatin1StringView source;
    QStringView text;
};

// The same word has the same translation wherever the toolkit uses it, so there is no context.
constexpr Entry Entries[] = {
    {"&Undo"_L1, u"&Desfazer"},
    {"&Redo"_L1, u"&Refazer"},
    {"Cu&t"_L1, u"Recor&tar"},
    {"&Copy"_L1, u"&Copiar"},
    {"Copy &Link Location"_L1, u"Copiar &endereço do link"},
    {"&Paste"_L1, u"Co&lar"},
    {"Delete"_L1, u"Excluir"},
    {"Select All"_L1, u"Selecionar tudo"},
    {"Scroll here"_L1, u"Rolar para cá"},
    {"Top"_L1, u"Início"},
    {"Bottom"_L1, u"Fim"},
    {"Left edge"_L1, u"Extremidade esquerda"},
    {"Right edge"_L1, u"Extremidade direita"},
    {"Page up"_L1, u"Página acima"},
    {"Page down"_L1, u"Página abaixo"},
    {"Page left"_L1, u"Página à esquerda"},
    {"Page right"_L1, u"Página à direita"},
    {"Scroll up"_L1, u"Rolar para cima"},
    {"Scroll down"_L1, u"Rolar para baixo"},
    {"Scroll left"_L1, u"Rolar para a esquerda"},
    {"Scroll right"_L1, u"Rolar para a direita"},
    {"OK"_L1, u"OK"},
    {"Cancel"_L1, u"Cancelar"},
    {"&Yes"_L1, u"&Sim"},
    {"&No"_L1, u"&Não"},
    {"Close"_L1, u"Fechar"},
    {"Folder"_L1, u"Pasta"},
    {"Drive"_L1, u"Unidade"},
    {"File"_L1, u"Arquivo"},
    {"%1 File"_L1, u"Arquivo %1"},
};

class OwnTranslation : public QTranslator {
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }

    QString translate(const char*, const char* source, const char*, int) const override {
        for (const Entry& entry : Entries) {
            if (entry.source == QLatin1StringView(source)) {
                return entry.text.toString();
            }
        }
        return {};
    }
};

}  // namespace

void InstallTranslation() {
    const QLocale portuguese(QLocale::Portuguese, QLocale::Brazil);
    QLocale::setDefault(portuguese);
    QCoreApplication* application = QCoreApplication::instance();
    QCoreApplication::installTranslator(new OwnTranslation(application));
    // The one installed last is asked first.
    auto* toolkit = new QTranslator(application);
    if (toolkit->load(portuguese, u"qtbase"_s, u"_"_s,
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(toolkit);
    }
}

}  // namespace forms
