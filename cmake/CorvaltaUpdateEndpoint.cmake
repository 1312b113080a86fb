# The server that the update check asks, and whose home page is the maker's web site. The
# default is the maker's; packagers and tests point the check at a server of their own without
# touching the source:
#   cmake -DCORVALTA_UPDATE_HOST=updates.example.org -DCORVALTA_UPDATE_PORT=8080 ...
# The check speaks plain HTTP, so the port is an HTTP port. The host is a name or an IPv4
# address: the client splits "host:port" at the first colon, so IPv6 literals can't work.
set(CORVALTA_UPDATE_HOST "www.dunmere.example" CACHE STRING
  "Host of the update manifest and of the maker's web site")
set(CORVALTA_UPDATE_PORT "80" CACHE STRING "HTTP port of CORVALTA_UPDATE_HOST")

if(NOT CORVALTA_UPDATE_HOST MATCHES "^[A-Za-z0-9]([A-Za-z0-9.-]*[A-Za-z0-9])?$")
  message(FATAL_ERROR
    "CORVALTA_UPDATE_HOST must be a host name or an IPv4 address, not '${CORVALTA_UPDATE_HOST}'")
endif()
if(NOT CORVALTA_UPDATE_PORT MATCHES "^[1-9][0-9]*$" OR CORVALTA_UPDATE_PORT GREATER 65535)
  message(FATAL_ERROR
    "CORVALTA_UPDATE_PORT must be a port from 1 to 65535, not '${CORVALTA_UPDATE_PORT}'")
endif()

# "host" on port 80, so that the request's Host header is the bare name; "host:port" otherwise.
if(CORVALTA_UPDATE_PORT EQUAL 80)
  set(CORVALTA_UPDATE_AUTHORITY "${CORVALTA_UPDATE_HOST}")
else()
  set(CORVALTA_UPDATE_AUTHORITY "${CORVALTA_UPDATE_HOST}:${CORVALTA_UPDATE_PORT}")
endif()
