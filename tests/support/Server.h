#ifndef SUPPORT_SERVER_H
#define SUPPORT_SERVER_H

#include <QByteArray>

#include <string>
#include <vector>

#include <sys/types.h>

namespace Test
{

/// A program that serves this process and says in the first line of its output where: a display, a
/// bus. It ends with this process, however that ends.
class Server
{
public:
    /// Returns when the server is there. Needs no application object.
    explicit Server(const std::vector<std::string>& command);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// The first line without its end; empty when the program could not be started.
    const QByteArray& getPlace() const { return place; }

private:
    QByteArray place;
    pid_t process;
};

} // namespace Test

#endif
