# What the owner of the project decides.
set(METERKIN_CONTACT "The Meterkin developers <developers@meterkin.org>" CACHE STRING
    "Who answers for the packages: a name and an address")
set(METERKIN_PROJECT_URL "" CACHE STRING "The project's page, linked from the settings; empty for none")
set(METERKIN_FEED_URL "" CACHE STRING "Where the feed of updates is; empty for none")
set(METERKIN_SUMMARY "CPU, memory and fan speed in the panel of your desktop")
