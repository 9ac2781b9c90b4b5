#pragma once

class Broker;

/// Prints what lists a site has, as a table or as JSON, one object a line; returns an exit code. It waits for
/// what the broker has and for the seats to say that they are there, and not for a broker that cannot be
/// reached.
int PrintSiteLists(Broker& broker, bool asJson);
