# The publisher's addresses. The defaults are hosts under the reserved domain .example (RFC 2606),
# which never resolve, so an unconfigured build connects to no host.

set(VINTRACE_SERVICE_HOST "service.vt.example" CACHE STRING
    "Host of the update check and the launch report, over HTTPS, with :PORT if it isn't 443; empty for neither")
set(VINTRACE_SITE_HOST "vt.example" CACHE STRING
    "Host of the program's web site, whose home page the links in the windows open")
set(VINTRACE_MAIL_ADDRESS "info@vt.example" CACHE STRING
    "Mail address of the publisher, which the about window shows")
set(VINTRACE_BUS_NAME "example.vt.Vintrace" CACHE STRING
    "Name on the session bus by which later starts find the running program")

set(host "[A-Za-z0-9]([A-Za-z0-9.-]*[A-Za-z0-9])?")
if(NOT VINTRACE_SERVICE_HOST MATCHES "^(${host}(:[0-9]+)?)?$")
  message(FATAL_ERROR "VINTRACE_SERVICE_HOST is not a host name: '${VINTRACE_SERVICE_HOST}'")
endif()
if(NOT VINTRACE_SITE_HOST MATCHES "^${host}(:[0-9]+)?$")
  message(FATAL_ERROR "VINTRACE_SITE_HOST is not a host name: '${VINTRACE_SITE_HOST}'")
endif()
if(NOT VINTRACE_MAIL_ADDRESS MATCHES "^[A-Za-z0-9._+-]+@${host}$")
  message(FATAL_ERROR "VINTRACE_MAIL_ADDRESS is not a mail address: '${VINTRACE_MAIL_ADDRESS}'")
endif()
if(NOT VINTRACE_BUS_NAME MATCHES "^[A-Za-z_-][A-Za-z0-9_-]*(\\.[A-Za-z_-][A-Za-z0-9_-]*)+$")
  message(FATAL_ERROR "VINTRACE_BUS_NAME is not a bus name: '${VINTRACE_BUS_NAME}'")
endif()
