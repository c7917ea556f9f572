#pragma once

#include "catalogue/folder.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "session/banco.h"
#include "support/test.h"

inline demo::Order OrderOf(const QString& folder, const demo::Sizes& sizes,
                           demo::Pictures pictures = demo::Pictures::None) {
    demo::Order order;
    order.folder = folder;
    order.sizes = sizes;
    order.pictures = pictures;
    return order;
}

// A small folder with its pictures, whose drawing takes a while: made once for all who look at it.
inline const demo::Order& Pictured() {
    static const QTemporaryDir folder;
    static const demo::Order order = [] {
        demo::Order made = OrderOf(folder.path(), {60, 300, 40, 24, 100}, demo::Pictures::Small);
        demo::MakeDataFolder(made);
        return made;
    }();
    return order;
}

// The catalogue of a folder, for the engine's own SQL.
inline std::shared_ptr<dao::Connection> Open(const QString& folder) {
    return std::make_shared<dao::Connection>(folder + u"/Tarvo.mdb"_s, SenhaBancoDados().toUtf8(),
                                             dao::Connection::Mode::ReadWrite);
}

inline int Count(dao::Connection& connection, const QByteArray& rows) {
    return connection.Value("SELECT count(*) FROM (" + rows + ")").toInt();
}
