#pragma once

#include <QString>

#include <functional>

// What a proxy wants to know before it lets a request through.
struct AcessoAoProxy {
    QString proxy;  // host and port
    QString area;   // what the proxy calls the area that it guards, perhaps empty
    QString usuario;
    QString senha;
    bool recusado = false;  // what was tried last did not do
};

// Asks the user for name and password. False when he gives up.
bool PedirAcessoAoProxy(AcessoAoProxy& acesso);

// Puts something in place of the dialog (tests). An empty function restores it.
using PedidoDeAcesso = std::function<bool(AcessoAoProxy& acesso)>;
void SetPedidoDeAcesso(PedidoDeAcesso pedido);

// What the user has typed, for all requests of one update: he is asked once. Nowhere on a disk.
struct AcessoDigitado {
    QString usuario;
    QString senha;
};
void LembrarAcesso(const AcessoDigitado& acesso);
void EsquecerAcesso();
const AcessoDigitado* AcessoLembrado();  // null: he has not been asked
