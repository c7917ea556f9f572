#pragma once

#include <QString>

#include <functional>

// What a proxy wants to know before it lets a request through.
struct AcessoAoProxy {
    QString proxy;  // host and port
    QString area;   // what the proxy calls the area that it guards, perhaps empty
    QString usuario;
    QString senha;
};

// Asks the user for name and password. False when he gives up. What he types is kept nowhere.
bool PedirAcessoAoProxy(AcessoAoProxy& acesso);

// Puts something in place of the dialog (tests). An empty function restores it.
using PedidoDeAcesso = std::function<bool(AcessoAoProxy& acesso)>;
void SetPedidoDeAcesso(PedidoDeAcesso pedido);
