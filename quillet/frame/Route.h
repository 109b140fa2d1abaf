#pragma once

#include <UIlib.h>

#include <list>

#include "quillet/Export.h"

namespace Quillet {

// What hears the broadcasts of a Route. Published: no virtual destructor; nobody deletes a receiver
// through this interface.
class QUILLET_API IMessage {
public:
    virtual void OnRouteMessage(int msg, void* param) = 0;
};

// A broadcast bus between windows, controllers and services that do not know one another. The
// application gives numbers and parameters their meaning.
//
// User-interface thread only; other threads get there through UIMainQueue. Published: nothing is
// locked, and there is no way to unregister, so a receiver outlives the last broadcast.
class QUILLET_API Route {
public:
    virtual ~Route();
    Route(const Route&);
    Route& operator=(const Route&);

    static Route* GetInstance(); // the one route, made at first use and never freed

    // Appends a receiver, which is not owned. One that is registered twice hears everything twice.
    void Register(IMessage* receiver);
    void RegisterService(IMessage* receiver);

    // Calls all services, then all clients, each in the order of their registration. One that is
    // registered behind the running one hears this broadcast already.
    void DispatchMessageW(int msg, void* param);

private:
    Route();

    std::list<IMessage*> m_clients;
    std::list<IMessage*> m_services;
};

} // namespace Quillet
