# The publisher's addresses. The defaults stand under the reserved domain .example, which resolves
# nowhere: a build that nobody configured leads to nobody's site.

set(VINTRACE_SITE_HOST "vt.example" CACHE STRING
    "Host of the program's web site, whose root the link of the windows opens")

if(NOT VINTRACE_SITE_HOST MATCHES "^[A-Za-z0-9]([A-Za-z0-9.-]*[A-Za-z0-9])?(:[0-9]+)?$")
  message(FATAL_ERROR "VINTRACE_SITE_HOST is no host name: '${VINTRACE_SITE_HOST}'")
endif()
