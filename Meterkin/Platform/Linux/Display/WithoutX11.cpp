#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Display/X11.h"

std::unique_ptr<DisplayServer> DisplayServer::make()
{
    return std::make_unique<DisplayServer>();
}

bool x11Answers()
{
    return false;
}

std::optional<QByteArray> x11DisplayName()
{
    return std::nullopt;
}

void endX11Startup(const QByteArray & /*identifier*/) { }
