# The update framework's declarations, laid out as the framework is, links and all.
set(folder ${CMAKE_BINARY_DIR}/frameworks)
set(METERKIN_SPARKLE ${folder} CACHE PATH "The folder that holds Sparkle.framework")
set(framework ${folder}/Sparkle.framework)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/Sparkle.framework/ DESTINATION ${framework}/Versions/B)
file(CREATE_LINK B ${framework}/Versions/Current SYMBOLIC)
foreach(name Headers Sparkle.tbd)
    file(CREATE_LINK Versions/Current/${name} ${framework}/${name} SYMBOLIC)
endforeach()
