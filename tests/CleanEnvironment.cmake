# What `run-test` runs every test in. Programs of targets below here are run by it, be it to list their tests or to run
# them; other tests put ${RUN_TEST} before their command.
set(TEST_ENVIRONMENT ${CMAKE_BINARY_DIR}/test-environment)
set(RUN_TEST ${CMAKE_CURRENT_SOURCE_DIR}/run-test ${TEST_ENVIRONMENT})
set(CMAKE_CROSSCOMPILING_EMULATOR ${RUN_TEST})

file(REMOVE_RECURSE ${TEST_ENVIRONMENT})
file(MAKE_DIRECTORY ${TEST_ENVIRONMENT}/home ${TEST_ENVIRONMENT}/plug-ins)
file(CHMOD ${TEST_ENVIRONMENT}/home PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# What the controller and the tests' outputs are made of, the decoders that it is tested with, and the outputs that the
# manuals name.
set(PLUGINS aiff alsa app audioconvert audioparsers audiorate audioresample audiotestsrc coreelements faad flac id3demux isomp4
    lame matroska mpg123 ogg opus playback pulseaudio rawparse tcp typefindfunctions udp voaacenc volume vorbis wavenc
    wavparse)
if(BUILD_CONTROLLER)
    pkg_get_variable(PLUGIN_FOLDER gstreamer-1.0 pluginsdir)
    foreach(PLUGIN IN LISTS PLUGINS)
        set(FILE libgst${PLUGIN}${CMAKE_SHARED_LIBRARY_SUFFIX})
        if(NOT EXISTS ${PLUGIN_FOLDER}/${FILE})
            message(FATAL_ERROR "the tests need GStreamer's plug-in ${PLUGIN}: there is no ${PLUGIN_FOLDER}/${FILE}; "
                "script/bootstrap installs it")
        endif()
        file(CREATE_LINK ${PLUGIN_FOLDER}/${FILE} ${TEST_ENVIRONMENT}/plug-ins/${FILE} SYMBOLIC)
    endforeach()
endif()
