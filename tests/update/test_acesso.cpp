#include "support/windows.h"
#include "update/acesso.h"

#include <QLabel>
#include <QPushButton>

struct TestAcesso : Fixture {};

// The dialog itself, under the keys of whoever knows the password.
TEST(TestAcesso, AsksForThePassword) {
    const QString asks =
        u"A atualização passa por um servidor proxy que pede usuário e senha.\n\n"
        "Proxy: proxy.exemplo:3128"_s;
    const QString refused = u"O proxy recusou o usuário ou a senha.\n\n"_s + asks;
    for (const auto& [user, area, text, held, keys, answer] :
         Each<QString, QString, QString, Qt::KeyboardModifier, QString, QString>{
             {"first", "", "", asks, Qt::NoModifier, "maria\ts3nha\r", "1 maria s3nha"},
             {"refused", "maria", "<b>Área</b>", refused + u"\nÁrea: <b>Área</b>"_s, Qt::NoModifier,
              "s3nha\r", "1 maria s3nha"},
             {"by the letters", "maria", "", refused, Qt::AltModifier, "usc", "0 maria "},
             {"on the button", "", "", asks, Qt::NoModifier, "maria\t\t\t\r", "0 maria "},
         }) {
        AcessoAoProxy access;
        access.proxy = u"proxy.exemplo:3128"_s;
        access.area = area;
        access.usuario = user;
        access.recusado = !user.isEmpty();
        WithNextBox([&](QDialog& box) {
            QVERIFY(QTest::qWaitForWindowActive(&box));
            const QList<QLabel*> labels = box.findChildren<QLabel*>();
            const QList<forms::TextBox*> boxes = box.findChildren<forms::TextBox*>();
            const QList<QPushButton*> buttons = box.findChildren<QPushButton*>();
            const QPoint aside = box.geometry().center() - box.screen()->geometry().center();
            QVERIFY(aside.manhattanLength() < 60);  // the frame's
            QCOMPARE(box.windowTitle(), u"Catálogo TARVO-LINDEN"_s);
            QCOMPARE(box.minimumSize(), box.maximumSize());
            QVERIFY(box.windowFlags() & Qt::WindowStaysOnTopHint);  // no screen to stand over
            QVERIFY(buttons.first()->isDefault());
            QCOMPARE(labels.first()->text(), text);
            const int lines = labels.first()->height() / labels.first()->fontMetrics().height();
            QVERIFY(lines > text.count(u'\n') + 1);  // what is too long for one goes on below
            QCOMPARE(box.focusWidget(), boxes.at(user.isEmpty() ? 0 : 1));
            QCOMPARE(boxes.first()->accessibleName() + boxes.last()->accessibleName(),
                     u"UsuárioSenha"_s);
            QCOMPARE(boxes.first()->height(), 21);
            QCOMPARE(boxes.last()->echoMode(), QLineEdit::Password);
            QCOMPARE(Gaps(box, Qt::Vertical,
                          {labels.first(), boxes.first(), boxes.last(), buttons.first()}),
                     u"16 10 10 10 14"_s);
            QCOMPARE(Gaps(box, Qt::Horizontal, {labels.first()}), u"18 18"_s);
            QCOMPARE(Gaps(box, Qt::Horizontal, {labels.at(1), boxes.first()}), u"18 12 18"_s);
            // A text of 320 in a row, and two buttons of 96 in the middle.
            QCOMPARE(Gaps(box, Qt::Horizontal, {buttons.first(), buttons.last()}), u"79 6 79"_s);
            QTest::keyClicks(nullptr, keys, held);
        });
        const bool accepted = PedirAcessoAoProxy(access);
        QCOMPARE(u"%1 %2 %3"_s.arg(accepted).arg(access.usuario, access.senha), answer);
    }
}
