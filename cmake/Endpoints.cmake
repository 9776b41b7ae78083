# The publisher's addresses. The defaults stand under the reserved domain .example, which resolves
# nowhere: a build that nobody configured leads to nobody's site and reaches nobody.

set(VINTRACE_SERVICE_HOST "service.vt.example" CACHE STRING
    "Host that is asked over HTTPS for a newer release and told of each start, with :PORT if it isn't 443; empty to call nobody")
set(VINTRACE_SITE_HOST "vt.example" CACHE STRING
    "Host of the program's web site, whose root the links of the windows open")
set(VINTRACE_MAIL_ADDRESS "info@vt.example" CACHE STRING
    "Mail address of the publisher, which the about window shows")

set(host "[A-Za-z0-9]([A-Za-z0-9.-]*[A-Za-z0-9])?")
if(NOT VINTRACE_SERVICE_HOST MATCHES "^(${host}(:[0-9]+)?)?$")
  message(FATAL_ERROR "VINTRACE_SERVICE_HOST is no host name: '${VINTRACE_SERVICE_HOST}'")
endif()
if(NOT VINTRACE_SITE_HOST MATCHES "^${host}(:[0-9]+)?$")
  message(FATAL_ERROR "VINTRACE_SITE_HOST is no host name: '${VINTRACE_SITE_HOST}'")
endif()
if(NOT VINTRACE_MAIL_ADDRESS MATCHES "^[A-Za-z0-9._+-]+@${host}$")
  message(FATAL_ERROR "VINTRACE_MAIL_ADDRESS is no mail address: '${VINTRACE_MAIL_ADDRESS}'")
endif()
