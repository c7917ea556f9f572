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

// Words of the file dialog that the toolkit's translation files under another name than the toolkit
// asks by.
constexpr Entry Entries[] = {
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
    // Comes with the program. The one installed last is asked first.
    auto* toolkit = new QTranslator(application);
    if (toolkit->load(portuguese, u"qtbase"_s, u"_"_s,
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(toolkit);
    }
}

}  // namespace forms
