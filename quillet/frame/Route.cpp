#include "quillet/frame/Route.h"

namespace Quillet {

Route::Route() = default;
Route::~Route() = default;
Route::Route(const Route&) = default;
Route& Route::operator=(const Route&) = default;

Route* Route::GetInstance()
{
    static Route* route = nullptr;
    // Published: not guarded; the first call comes before there are other threads.
    if (!route)
        route = new Route;
    return route;
}

void Route::Register(IMessage* receiver)
{
    m_clients.push_back(receiver);
}

void Route::RegisterService(IMessage* receiver)
{
    m_services.push_back(receiver);
}

void Route::DispatchMessageW(int msg, void* param)
{
    // Published: nothing is copied or checked, so receivers appended meanwhile are reached and a
    // null or destroyed one fails the process.
    for (IMessage* const service : m_services)
        service->OnRouteMessage(msg, param);
    for (IMessage* const client : m_clients)
        client->OnRouteMessage(msg, param);
}

} // namespace Quillet
