#pragma once

#include <QString>

#include <memory>

// What the catalogue and its verifier tell each other while a check runs: a small file that only
// this user can read, in memory where the system has such a place, and gone with the check. The
// catalogue makes it; the verifier learns its name from the environment that it was started in. A
// verifier of another version knows nothing of it, and all goes on without.
class Conversa {
public:
    // The catalogue's end. Null where no such file can be had.
    static std::unique_ptr<Conversa> Abrir();
    // The verifier's end. Null when nobody has made one.
    static std::unique_ptr<Conversa> Atender();
    ~Conversa();
    Conversa(const Conversa&) = delete;
    Conversa& operator=(const Conversa&) = delete;

    // While it lives, programs that are started find the conversation.
    class Convite {
    public:
        explicit Convite(const Conversa* conversa);
        ~Convite();
        Convite(const Convite&) = delete;
        Convite& operator=(const Convite&) = delete;
    };

    // The user wants to see the verifier's window.
    void Chamar();
    bool FoiChamada();  // since the last question

    // Nobody waits for the answer any more.
    void Desistir();
    bool Desistiu() const;  // also when the catalogue is not running any more

    // What the user has typed for the proxy, for the rest of one update.
    void GuardarAcesso(const QString& usuario, const QString& senha);
    bool LerAcesso(QString& usuario, QString& senha) const;  // false: nothing; the caller wipes it

private:
    struct Partilha;
    Conversa();
    std::unique_ptr<Partilha> d_;
};
