// The types of the API. Made by types.mjs from the controller's description of it: not to be changed by hand.

export interface paths {
  '/api/announcements': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * Every stored announcement, by id
     * @description Needs the right: play
     */
    get: operations['list_announcements'];
    put?: never;
    /**
     * Stores an announcement; the agent chooses its id
     * @description Needs the right: admin
     */
    post: operations['add_announcement'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/announcements/{id}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * One announcement
     * @description Needs the right: play
     */
    get: operations['get_announcement'];
    /**
     * Replaces all of an announcement; with If-Match only when it is still the one that was read
     * @description Needs the right: admin
     */
    put: operations['replace_announcement'];
    post?: never;
    /**
     * Removes an announcement; one that plays plays to its end
     * @description Needs the right: admin
     */
    delete: operations['remove_announcement'];
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/announcements/{id}/navigators/{navigator}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    /**
     * Adds a navigator to an announcement, or changes it there
     * @description Needs the right: admin
     */
    put: operations['put_announcement_navigator'];
    post?: never;
    /**
     * Takes a navigator out of an announcement
     * @description Needs the right: admin
     */
    delete: operations['remove_announcement_navigator'];
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/announcements/{id}/play': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Plays an announcement, now or when its turn comes
     * @description Needs the right: play
     */
    post: operations['play_announcement'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/announcements/{id}/rooms/{room}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    /**
     * Adds a room to an announcement, or changes its volume there
     * @description Needs the right: admin
     */
    put: operations['put_announcement_room'];
    post?: never;
    /**
     * Takes a room out of an announcement
     * @description Needs the right: admin
     */
    delete: operations['remove_announcement_room'];
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/commands/{name}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Sends the agent one of its own commands
     * @description Needs the right: admin
     */
    post: operations['send_command'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/dismiss': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Takes the popup of what plays away, on every screen
     * @description Needs the right: play
     */
    post: operations['dismiss'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/events': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * The full state, then every change, as WebSocket
     * @description Needs the right: play
     */
    get: operations['watch_events'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/events/recent': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * The last events, oldest first
     * @description Needs the right: play
     */
    get: operations['list_recent_events'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/history': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * What has been played, newest first
     * @description Needs the right: play
     */
    get: operations['get_history'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/house': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * Name, rooms and navigators of the house
     * @description Needs the right: play
     */
    get: operations['get_house'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/media': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * The sounds and images of the media folder
     * @description Needs the right: play
     */
    get: operations['list_media'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/media/{name}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * A sound or image itself
     * @description Needs the right: navigator
     */
    get: operations['get_media'];
    /**
     * Stores a sound or image in any usual format; 201 when it is new
     * @description Needs the right: admin
     */
    put: operations['put_media'];
    post?: never;
    /**
     * Removes a sound or image that no announcement uses
     * @description Needs the right: admin
     */
    delete: operations['remove_media'];
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/media/{name}/loudness': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    /**
     * Says whether a sound is played as loud as all others, or as it is
     * @description Needs the right: admin
     */
    put: operations['put_loudness'];
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/media/{name}/speech': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    /**
     * Stores a spoken sound, and speaks it
     * @description Needs the right: admin
     */
    put: operations['put_speech'];
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/media/{name}/thumbnail': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * An image with at most 320 pixels on the longer side
     * @description Needs the right: navigator
     */
    get: operations['get_thumbnail'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/navigators': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * The navigators
     * @description Needs the right: play
     */
    get: operations['list_navigators'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/navigators/{id}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * One navigator
     * @description Needs the right: navigator
     */
    get: operations['get_navigator'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/navigators/{id}/events': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * What a navigator's page shows, as WebSocket
     * @description Needs the right: navigator
     */
    get: operations['watch_navigator'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/navigators/{id}/popups/{number}/ok': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * The OK of a popup: closes it on every screen; of one that is gone it does nothing
     * @description Needs the right: navigator
     */
    post: operations['confirm_popup'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/navigators/{id}/test': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Shows a popup on the navigator for a few seconds
     * @description Needs the right: play
     */
    post: operations['test_navigator'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/once/{name}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /** A sound that a player in the house was told to fetch, for a minute */
    get: operations['get_one_time_sound'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/openapi.json': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /** This API as OpenAPI 3.1 */
    get: operations['describe_api'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/operations': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /** This list */
    get: operations['list_operations'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/outputs': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * Where rooms could be heard, each with its line for the house file
     * @description Needs the right: admin
     */
    get: operations['list_outputs'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/outputs/test': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Plays a tone on an output, whether it is a room's or not
     * @description Needs the right: play
     */
    post: operations['test_output'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/queue': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * What waits to be played, the next one first
     * @description Needs the right: play
     */
    get: operations['list_queue'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/queue/{entry}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    post?: never;
    /**
     * Takes back what waits
     * @description Needs the right: play
     */
    delete: operations['remove_queued'];
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/queue/{entry}/move': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Moves what waits in front of another one, or behind all
     * @description Needs the right: play
     */
    post: operations['move_queued'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/rehearsal': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * What playing an announcement would do, without playing it
     * @description Needs the right: play
     */
    post: operations['rehearse'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/requests/{name}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Sends the agent one of its own requests; gives its XML
     * @description Needs the right: admin
     */
    post: operations['send_request'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/rooms': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * The rooms
     * @description Needs the right: play
     */
    get: operations['list_rooms'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/rooms/{id}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * One room
     * @description Needs the right: play
     */
    get: operations['get_room'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/rooms/{id}/test': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Plays a tone in the room, at its own volume
     * @description Needs the right: play
     */
    post: operations['test_room'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/rooms/{id}/volume': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    /**
     * Sets a room's volume, at most its highest
     * @description Needs the right: play
     */
    put: operations['set_room_volume'];
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/say': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Speaks and shows a text, or plays a sound, once
     * @description Needs the right: play
     */
    post: operations['say'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/status': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * What is playing and waiting, and how that is known
     * @description Needs the right: play
     */
    get: operations['get_status'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/stop': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Stops what plays: the sound fades out in every room, and the popups go
     * @description Needs the right: play
     */
    post: operations['stop'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/tickets': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * A ticket for opening one WebSocket from a browser
     * @description Needs the right: any
     */
    post: operations['give_ticket'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/try': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    get?: never;
    put?: never;
    /**
     * Plays an announcement once, without storing it
     * @description Needs the right: admin
     */
    post: operations['try_announcement'];
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/variables': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * The variables
     * @description Needs the right: play
     */
    get: operations['list_variables'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/variables/{device}/{variable}': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * One variable
     * @description Needs the right: play
     */
    get: operations['get_variable'];
    /**
     * Sets a variable; popups that are bound to it follow
     * @description Needs the right: play
     */
    put: operations['set_variable'];
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/api/voices': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * The voices of the house
     * @description Needs the right: play
     */
    get: operations['list_voices'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/healthz': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /** Whether the controller works */
    get: operations['get_health'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
  '/metrics': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /**
     * Counts for Prometheus
     * @description Needs the right: play
     */
    get: operations['get_metrics'];
    put?: never;
    post?: never;
    delete?: never;
    options?: never;
    head?: never;
    patch?: never;
    trace?: never;
  };
}
export type webhooks = Record<string, never>;
export interface components {
  schemas: {
    Alive: {
      /** @constant */
      type: 'alive';
    };
    Announcement: {
      audio: components['schemas']['AnnouncementAudio'];
      /** @description May be left out, or is that of the address: the agent chooses it */
      id: number;
      name: string;
      navigators: components['schemas']['AnnouncementNavigator'][];
      rooms: components['schemas']['AnnouncementRoom'][];
      /** @description Words to find it by; left out for none */
      tags?: string[];
      /** @description Goes to the urgent address of loudspeakers that have one; left out for false */
      urgent?: boolean;
      video: components['schemas']['AnnouncementVideo'];
    };
    AnnouncementAudio: {
      delay_ms: number;
      /** @description A sound of the media folder, without .wav; empty for none */
      file: string;
    };
    AnnouncementAudioBody: {
      /** @default 0 */
      delay_ms?: number;
      /**
       * @description A sound of the media folder, without .wav; empty for none
       * @default
       */
      file?: string;
    };
    AnnouncementBody: {
      audio?: components['schemas']['AnnouncementAudioBody'];
      /**
       * @description May be left out, or is that of the address: the agent chooses it
       * @default 0
       */
      id?: number;
      name: string;
      /** @default [] */
      navigators?: components['schemas']['AnnouncementNavigatorBody'][];
      /** @default [] */
      rooms?: components['schemas']['AnnouncementRoomBody'][];
      /**
       * @description Words to find it by; left out for none
       * @default []
       */
      tags?: string[];
      /**
       * @description Goes to the urgent address of loudspeakers that have one; left out for false
       * @default false
       */
      urgent?: boolean;
      video?: components['schemas']['AnnouncementVideoBody'];
    };
    AnnouncementEndedEvent: {
      data: {
        announcement: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'announcement_ended';
    };
    AnnouncementList: {
      /** @description By id */
      announcements: components['schemas']['Announcement'][];
    };
    AnnouncementNavigator: {
      id: number;
      onscreen: boolean;
      room: number;
    };
    AnnouncementNavigatorBody: {
      id: number;
      /** @default true */
      onscreen?: boolean;
      /** @default 0 */
      room?: number;
    };
    AnnouncementNavigatorPlace: {
      /** @default true */
      onscreen?: boolean;
      /** @default 0 */
      room?: number;
    };
    AnnouncementRemovedEvent: {
      data: {
        announcement: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'announcement_removed';
    };
    AnnouncementRoom: {
      id: number;
      /** @description 0 and -1 leave the room's volume as it is */
      volume: number;
    };
    AnnouncementRoomBody: {
      id: number;
      /**
       * @description 0 and -1 leave the room's volume as it is
       * @default -1
       */
      volume?: number;
    };
    AnnouncementRoomVolume: {
      /**
       * @description 0 and -1 leave the room's volume as it is
       * @default -1
       */
      volume?: number;
    };
    AnnouncementStartedEvent: {
      data: {
        announcement: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'announcement_started';
    };
    AnnouncementStoppedEvent: {
      data: {
        announcement: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'announcement_stopped';
    };
    AnnouncementStoredEvent: {
      data: {
        announcement: number;
        /** @description As it is; not among the recent events */
        now?: components['schemas']['Announcement'];
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'announcement_stored';
    };
    AnnouncementVideo: {
      delay_ms: number;
      /** @description A file of the media folder, or an http(s) address; empty for none */
      image: string;
      ok_button: boolean;
      text: string;
      /** @description How long the popup stands; 0 means 30000 */
      timeout_ms: number;
      /** @description The message follows this variable's value */
      variable: components['schemas']['VariableBinding'] | null;
    };
    AnnouncementVideoBody: {
      /** @default 0 */
      delay_ms?: number;
      /**
       * @description A file of the media folder, or an http(s) address; empty for none
       * @default
       */
      image?: string;
      /** @default true */
      ok_button?: boolean;
      /** @default  */
      text?: string;
      /**
       * @description How long the popup stands; 0 means 30000
       * @default 0
       */
      timeout_ms?: number;
      /**
       * @description The message follows this variable's value
       * @default null
       */
      variable?: components['schemas']['VariableBindingBody'] | null;
    };
    /**
     * @description x-texts has what each means, with its values in braces
     * @enum {string}
     */
    Code:
      | 'page_not_armed'
      | 'sound_no_file'
      | 'known_kinds'
      | 'player_is_group'
      | 'smaller_image'
      | 'house_no_token'
      | 'good_name'
      | 'house_token_open'
      | 'card_forbidden'
      | 'part_of_it'
      | 'truncated'
      | 'too_large'
      | 'room_on_disk'
      | 'unused_file'
      | 'player_too_late'
      | 'character_not_kept'
      | 'snapcast_source'
      | 'ends_before_sound'
      | 'sound_not_for_pages'
      | 'later_when_played'
      | 'sound_no_address'
      | 'no_sound_device'
      | 'snapcast_nonsense'
      | 'body_padded'
      | 'strange_rate'
      | 'snapcast_client_away'
      | 'text_too_long_filled'
      | 'house_token_unreadable'
      | 'voice_not_installed'
      | 'other_file_or_wav'
      | 'page_too_late'
      | 'nothing_there'
      | 'strange_channels'
      | 'still_hangs'
      | 'page_silenced'
      | 'no_plain_file'
      | 'voice_stopped'
      | 'other_name_or_spoken_removed'
      | 'other_origin'
      | 'no_right'
      | 'ended_while_played'
      | 'snapcast_hangs'
      | 'snapcast_ended'
      | 'websocket_version'
      | 'not_on_disk'
      | 'sound_missing'
      | 'page_gone'
      | 'other_image'
      | 'token_made'
      | 'too_many_wrong_tokens'
      | 'number_too_large'
      | 'failed'
      | 'beginning_missing'
      | 'announcement_removed'
      | 'too_long'
      | 'sound_empty'
      | 'read_too_slowly'
      | 'page_stopped'
      | 'unknown_variable'
      | 'player_fetches_nothing'
      | 'file_not_written'
      | 'no_sink'
      | 'page_cannot_play'
      | 'snapcast_unreachable'
      | 'snapcast_stream_unusable'
      | 'announcement_changed'
      | 'conversion_failed'
      | 'page_not_open'
      | 'agent_takes_no_such'
      | 'header_only'
      | 'snapcast_no_stream'
      | 'name_without_wav'
      | 'other_name_or_removed'
      | 'ticket_unknown'
      | 'websocket_key'
      | 'websocket_too_early'
      | 'no_variable'
      | 'image_has_no_parts'
      | 'tests_hang'
      | 'default_unusable'
      | 'no_pages'
      | 'snapcast_no_client'
      | 'voice_broken_off'
      | 'no_file'
      | 'every_room_removed'
      | 'no_clear_end'
      | 'one_time_over'
      | 'zone_unreachable_through'
      | 'breaks_off'
      | 'is_file'
      | 'voice_gives_no_wav'
      | 'voice_or_screen'
      | 'tokens_wait'
      | 'http_version'
      | 'server_without_device'
      | 'sound_not_offered'
      | 'sound_removed'
      | 'house_other_answer'
      | 'variables_in_braces'
      | 'id_of_navigators'
      | 'no_host'
      | 'before_no_entry'
      | 'began_meanwhile'
      | 'no_thumbnail'
      | 'voice_too_slow'
      | 'voice_floods'
      | 'image_not_heard'
      | 'cannot_decode'
      | 'folder_unreadable'
      | 'snapcast_refuses'
      | 'readable_parameters'
      | 'waiting_entry'
      | 'folded_header'
      | 'announcement_without_navigator'
      | 'too_many_spoken'
      | 'voice_has_too_many'
      | 'voice_killed'
      | 'shorter_text'
      | 'one_of_variables'
      | 'no_such_address'
      | 'request_too_slow'
      | 'no_media_name'
      | 'sound_server_hangs'
      | 'nothing_decoded'
      | 'took_too_long'
      | 'voice_unreachable'
      | 'voice_failed'
      | 'head_too_large'
      | 'address_no_number'
      | 'no_size'
      | 'id_of_rooms'
      | 'listed_output'
      | 'stored_id'
      | 'whole_sound'
      | 'playable_sound'
      | 'body_too_large'
      | 'body_no_json'
      | 'other_thumbnails'
      | 'other_rehearsals'
      | 'address_no_id'
      | 'part_too_long'
      | 'test_running'
      | 'voice_silent'
      | 'house_refuses'
      | 'text_or_sound'
      | 'room_or_navigator'
      | 'image_ending'
      | 'body_of_wrong_type'
      | 'agent_cannot_modify'
      | 'history_unreadable'
      | 'part_empty'
      | 'not_writable'
      | 'chime_unplayable'
      | 'house_unsafe'
      | 'other_host'
      | 'body_not_taken'
      | 'other_files'
      | 'value_twice'
      | 'announcement_without_room'
      | 'agent_knows_no_announcement'
      | 'no_navigator'
      | 'too_many_wait'
      | 'file_in_use'
      | 'not_playable'
      | 'named_removed'
      | 'house_lost'
      | 'websocket_only'
      | 'id_differs'
      | 'no_ok_button'
      | 'nobody_there'
      | 'no_sound_name'
      | 'no_such_sound'
      | 'zone_unreachable'
      | 'house_slow'
      | 'later_when_over'
      | 'bad_query'
      | 'limit_out_of_range'
      | 'no_announcement'
      | 'plays_already'
      | 'no_sound_server'
      | 'output_hangs'
      | 'one_removed'
      | 'other_method'
      | 'no_http'
      | 'file_too_large'
      | 'test_interrupted'
      | 'no_whole_picture'
      | 'broken'
      | 'ended_by_signal'
      | 'one_speed'
      | 'no_text'
      | 'player_not_stopped'
      | 'agent_not_running'
      | 'ending'
      | 'not_opened'
      | 'token_in_a_minute'
      | 'body_too_deep'
      | 'address_too_long'
      | 'no_room'
      | 'nothing_to_say'
      | 'no_room_heard'
      | 'ended_with_status'
      | 'later'
      | 'value_no_truth'
      | 'value_too_long'
      | 'no_output'
      | 'file_not_removed'
      | 'not_closed'
      | 'no_speed'
      | 'cannot_be_spoken'
      | 'voice_answers'
      | 'house_unreachable'
      | 'some_bytes'
      | 'integer_between'
      | 'token_unknown'
      | 'stream_closed'
      | 'stops_midway'
      | 'player_unavailable'
      | 'value_out_of_range'
      | 'text_too_long'
      | 'body_encoded'
      | 'agent_failed'
      | 'no_such_entry'
      | 'took_no_sound'
      | 'no_voice'
      | 'is_spoken'
      | 'not_spoken'
      | 'house_broken_off'
      | 'name_of_sound'
      | 'value_no_integer'
      | 'agent_has_no'
      | 'token_needed'
      | 'file_empty'
      | 'unreadable'
      | 'entries_at_most'
      | 'member_unknown'
      | 'test_too_long'
      | 'house_answers'
      | 'value_no_text'
      | 'damaged'
      | 'whole_request'
      | 'file_itself'
      | 'bytes_at_most'
      | 'value_no_object'
      | 'holds_no_sound'
      | 'member_missing'
      | 'value_no_list'
      | 'house_no_player'
      | 'whole_file'
      | 'the_right'
      | 'the_speech'
      | 'bad_query_value'
      | 'one_of'
      | 'list'
      | 'other';
    Confirmed: {
      dismissed: boolean;
    };
    Dismissed: {
      /** @description What was playing; null when nothing was */
      announcement: number | null;
    };
    Event:
      | components['schemas']['PlayAskedEvent']
      | components['schemas']['QueueChangedEvent']
      | components['schemas']['AnnouncementStartedEvent']
      | components['schemas']['PlayingChangedEvent']
      | components['schemas']['AnnouncementStoppedEvent']
      | components['schemas']['AnnouncementEndedEvent']
      | components['schemas']['AnnouncementStoredEvent']
      | components['schemas']['AnnouncementRemovedEvent']
      | components['schemas']['RoomSetUpEvent']
      | components['schemas']['RoomVolumeChangedEvent']
      | components['schemas']['RoomRestoredEvent']
      | components['schemas']['RoomOutputFailedEvent']
      | components['schemas']['RoomHealthChangedEvent']
      | components['schemas']['ScreensWokenEvent']
      | components['schemas']['ScreensRestedEvent']
      | components['schemas']['SoundStartedEvent']
      | components['schemas']['SoundEndedEvent']
      | components['schemas']['PopupShownEvent']
      | components['schemas']['PopupChangedEvent']
      | components['schemas']['PopupHiddenEvent']
      | components['schemas']['PagesChangedEvent']
      | components['schemas']['VariableChangedEvent']
      | components['schemas']['MediaStoredEvent']
      | components['schemas']['MediaRemovedEvent']
      | components['schemas']['VoiceFailedEvent']
      | components['schemas']['VoiceRecoveredEvent']
      | components['schemas']['StateSavedEvent']
      | components['schemas']['StateNotSavedEvent']
      | components['schemas']['LogEvent'];
    EventList: {
      /** @description Oldest first */
      events: components['schemas']['Event'][];
    };
    FollowedVariable: {
      device: number;
      variable: number;
    };
    Health: {
      status: string;
    };
    History: {
      /** @description Newest first */
      history: components['schemas']['HistoryEntry'][];
    };
    HistoryEntry: {
      announcement: number;
      ended: string;
      file: string;
      id: number;
      name: string;
      navigators: number[];
      /** @description ended, dismissed, stopped, interrupted, dropped, or failed: WHY */
      outcome: string;
      /** @description WHY */
      reason?: string;
      reason_means?: components['schemas']['Meaning'];
      rooms: number[];
      started: string;
    };
    House: {
      name: string;
      navigators: components['schemas']['Navigator'][];
      rooms: components['schemas']['Room'][];
    };
    KnownFrom: {
      playing: string;
      sound: string;
      waiting: string;
    };
    LogEvent: {
      data: {
        /** @enum {string} */
        level: 'error' | 'warning' | 'notice' | 'information' | 'debug';
        text: string;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'log';
    };
    Loudness: {
      /** @description Somebody has said that it is to be played so */
      as_it_is: boolean;
      /** @description By which it is played, in dB */
      gain: number | null;
      /** @description By EBU R 128; null for what is too quiet to be measured */
      lufs: number | null;
      /** @description dBTP; null for silence */
      true_peak: number | null;
    };
    LoudnessOrder: {
      /** @description Whether the sound is played as loud as its file is */
      as_it_is: boolean;
    };
    Meaning: {
      code: components['schemas']['Code'];
      /** @description What stands in the places of the code's text */
      params: components['schemas']['Parameters'];
    };
    MediaFile: {
      bytes: number;
      channels?: number;
      duration_ms?: number;
      height?: number;
      /** @description Of a file that has just come: whether it was made into another */
      is_converted?: boolean;
      /** @enum {string} */
      kind: 'sound' | 'image';
      /** @description Of a sound that has been measured */
      loudness?: components['schemas']['Loudness'];
      /** Format: date-time */
      modified: string;
      name: string;
      sample_rate?: number;
      /** @description Of a spoken sound */
      speech?: components['schemas']['SpeechRecipe'];
      /** @description Why the sound cannot be played */
      trouble?: string;
      trouble_means?: components['schemas']['Meaning'];
      /** @description Of an image, in pixels, as it is shown */
      width?: number;
    };
    MediaList: {
      /** @description By name */
      media: components['schemas']['MediaFile'][];
    };
    MediaRemovedEvent: {
      data: {
        name: string;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'media_removed';
    };
    MediaStoredEvent: {
      data: {
        name: string;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'media_stored';
    };
    Moment: {
      announcement?: number;
      at_ms: number;
      duration_ms?: number;
      file?: string;
      image?: string;
      level?: string;
      message?: string;
      navigator?: number;
      ok_button?: boolean;
      room?: number;
      text?: string;
      text_means?: components['schemas']['Meaning'];
      variable?: components['schemas']['FollowedVariable'];
      volume?: number;
      /** @enum {string} */
      what:
        | 'started'
        | 'ended'
        | 'room_set_up'
        | 'room_restored'
        | 'screens_woken'
        | 'screens_rested'
        | 'volume_set'
        | 'stream_opened'
        | 'stream_ready'
        | 'stream_closed'
        | 'sound_started'
        | 'sound_ended'
        | 'popup_shown'
        | 'popup_hidden'
        | 'room_missing'
        | 'screen_missing'
        | 'sound_missing'
        | 'log';
    };
    Named: {
      id: number;
      name: string;
    };
    Navigator: {
      /** @description Whether one of its pages can be heard; null where no room plays on it */
      armed: boolean | null;
      awake: boolean;
      id: number;
      name: string;
      /** @description How many of its pages are connected */
      pages: number;
      popup: components['schemas']['Popup'] | null;
      room: number;
      /** @description Of the window that its page is shown in; null when none is */
      size: components['schemas']['ScreenSize'] | null;
    };
    NavigatorList: {
      navigators: components['schemas']['Navigator'][];
    };
    Nothing: Record<string, never>;
    Operation: {
      method: string;
      name: string;
      parameters: components['schemas']['OperationParameter'][];
      path: string;
      right: string;
      summary: string;
    };
    OperationList: {
      operations: components['schemas']['Operation'][];
    };
    OperationParameter: {
      /** @enum {string} */
      in: 'path' | 'query';
      name: string;
      summary: string;
    };
    Output: {
      /** @description What its server or machine takes by itself */
      default: boolean;
      /** @enum {string} */
      kind: 'sound_server' | 'sound_card' | 'snapcast' | 'page';
      /** @description What stands with a room in the house file */
      line: string;
      /** @description As its server or machine calls it */
      name: string;
      /** @description As a room has it */
      output: string;
      /** @description Those of the house that are heard there, by id */
      rooms: number[];
    };
    OutputList: {
      outputs: components['schemas']['Output'][];
    };
    OutputTest: {
      /** @description One that GET /api/outputs lists */
      output: string;
      /** @default 40 */
      volume?: number;
    };
    OutputTested: {
      /** @description To its last sample, as far as that can be known */
      heard: boolean;
      /** @description Why it was not */
      trouble: string | null;
      trouble_means?: components['schemas']['Meaning'];
    };
    PageMessage:
      | components['schemas']['PageStateMessage']
      | components['schemas']['Alive']
      | components['schemas']['Pong']
      | components['schemas']['SoundFetchMessage']
      | components['schemas']['SoundPlayMessage']
      | components['schemas']['SoundGainMessage']
      | components['schemas']['SoundStopMessage']
      | components['schemas']['WakePageEvent']
      | components['schemas']['RestPageEvent']
      | components['schemas']['PopupShownPageEvent']
      | components['schemas']['PopupChangedPageEvent']
      | components['schemas']['PopupHiddenPageEvent'];
    PagesChangedEvent: {
      data: {
        /** @description Whether one of its pages can be heard; null where no room plays on it */
        armed: boolean | null;
        navigator: number;
        pages: number;
        size: components['schemas']['ScreenSize'] | null;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'pages_changed';
    };
    PageState: {
      awake: boolean;
      house: string;
      navigator: components['schemas']['Named'];
      popup: components['schemas']['Popup'] | null;
      room: components['schemas']['Named'];
      /** @description Rooms play on this page */
      speaker: boolean;
    };
    PageStateMessage: {
      data: components['schemas']['PageState'];
      /** @description The number of the last event */
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'state';
    };
    Parameters: {
      [key: string]: string;
    };
    PlayAskedEvent: {
      data: {
        /** @description Somebody asks for it */
        announcement: number;
        /** @description Its number in the queue; 0: the agent is asked at once */
        entry: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'play_asked';
    };
    Played: {
      announcement: number;
      /** @description Its number in the queue; 0 when it played already */
      entry: number;
      /** @enum {string} */
      state: 'playing' | 'waiting';
    };
    Playing: {
      announcement: number;
      /** @description A popup of it stands */
      can_be_dismissed: boolean;
      /**
       * Format: date-time
       * @description Probably
       */
      ends: string;
      name: string;
      /** Format: date-time */
      since: string;
      sound: components['schemas']['SoundNow'] | null;
      stopped: boolean;
    };
    PlayingChangedEvent: {
      data: {
        playing: components['schemas']['Playing'] | null;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'playing_changed';
    };
    PlayingSound: {
      file: string;
      /** Format: date-time */
      since: string;
    };
    Pong: {
      data: {
        /** @description Microseconds of the controller's clock */
        now: number;
        ping: number;
      };
      /** @constant */
      type: 'pong';
    };
    Popup: {
      /** Format: date-time */
      ends: string;
      /** @description Empty, /api/media/NAME, or an http(s) address */
      image: string;
      message: string;
      number: number;
      ok_button: boolean;
      remaining_ms: number;
    };
    PopupChangedEvent: {
      data: {
        message: string;
        navigator: number;
        number: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'popup_changed';
    };
    PopupChangedPageEvent: {
      data: {
        message: string;
        number: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'popup_changed';
    };
    PopupHiddenEvent: {
      data: {
        navigator: number;
        number: number;
        /** @enum {string} */
        why: 'time_is_up' | 'hidden' | 'dismissed' | 'replaced';
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'popup_hidden';
    };
    PopupHiddenPageEvent: {
      data: {
        number: number;
        /** @enum {string} */
        why: 'time_is_up' | 'hidden' | 'dismissed' | 'replaced';
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'popup_hidden';
    };
    PopupShownEvent: {
      data: {
        navigator: number;
        popup: components['schemas']['Popup'];
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'popup_shown';
    };
    PopupShownPageEvent: {
      data: {
        popup: components['schemas']['Popup'];
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'popup_shown';
    };
    Problem: {
      code: components['schemas']['Code'];
      /** @description What is wrong, and where */
      detail: string;
      /** @description How long the sound is that is too long */
      duration_ms?: number;
      /** @description What stands in the places of the code's text; right.code: what "right" means */
      params?: components['schemas']['Parameters'];
      /** @description What would be right */
      right?: string;
      status: number;
      title: string;
      type: string;
      /** @description The announcements that use the file that was to be removed */
      users?: components['schemas']['User'][];
    };
    Queue: {
      /** @description The next one first */
      queue: components['schemas']['Queued'][];
    };
    QueueChangedEvent: {
      data: {
        /** @description The next one first */
        queue: components['schemas']['Queued'][];
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'queue_changed';
    };
    Queued: {
      announcement: number;
      /** Format: date-time */
      asked_at: string;
      entry: number;
      /** @description As it was when it was asked for */
      name: string;
    };
    QueueMove: {
      /**
       * @description The entry that is played behind it; null: behind all
       * @default null
       */
      before?: number | null;
    };
    Rehearsal: {
      announcement: number;
      /** @description False when it is not over within ten minutes */
      complete: boolean;
      length_ms: number;
      timeline: components['schemas']['Moment'][];
    };
    RehearsalOrder: {
      announcement: number | components['schemas']['AnnouncementBody'];
      /**
       * @description How long the sound lasts; as long as its file, when left out
       * @default null
       */
      sound_ms?: number | null;
      /** @default 20 */
      stream_ready_ms?: number;
    };
    RestPageEvent: {
      data: Record<string, never>;
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'rest';
    };
    Room: {
      /** @description Its output tells when it is not heard; loudspeakers at a multicast address never do */
      answers: boolean;
      awake: boolean;
      /**
       * @description Whether it would be heard now: silent, when what is played there goes nowhere; unknown, when only playing can tell
       * @enum {string}
       */
      health: 'unknown' | 'healthy' | 'silent' | 'unheard';
      id: number;
      /** @description An announcement has set the room up and not given it back */
      in_announcement: boolean;
      lead_silence_ms: number;
      max_volume: number;
      name: string;
      output: string;
      /** @description Why it would not be heard, or was not in the last announcement */
      trouble: string | null;
      trouble_means?: components['schemas']['Meaning'];
      volume: number;
    };
    RoomHealthChangedEvent: {
      data: {
        /** @enum {string} */
        health: 'unknown' | 'healthy' | 'silent' | 'unheard';
        /** @description Why it would not be heard now */
        reason: string | null;
        reason_means?: components['schemas']['Meaning'];
        room: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'room_health_changed';
    };
    RoomList: {
      rooms: components['schemas']['Room'][];
    };
    RoomOutputFailedEvent: {
      data: {
        reason: string;
        reason_means?: components['schemas']['Meaning'];
        room: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'room_output_failed';
    };
    RoomRestoredEvent: {
      data: {
        changed_meanwhile: boolean;
        room: number;
        volume: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'room_restored';
    };
    RoomSetUpEvent: {
      data: {
        room: number;
        /** @description Its own, kept for later */
        volume: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'room_set_up';
    };
    RoomVolume: {
      id: number;
      /** @description That it now has */
      volume: number;
    };
    RoomVolumeChangedEvent: {
      data: {
        room: number;
        volume: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'room_volume_changed';
    };
    Said: {
      announcement: number;
      /** @description Its number in the queue */
      entry: number;
      /** @enum {string} */
      state: 'playing' | 'waiting';
      /** @description Why the text is not spoken */
      trouble: string | null;
      trouble_means?: components['schemas']['Meaning'];
    };
    SayOrder: {
      /**
       * @description A sound of the media folder that is heard in front of the text
       * @default
       */
      chime?: string;
      /** @default [] */
      navigators?: components['schemas']['SayScreen'][];
      /** @default [] */
      rooms?: components['schemas']['AnnouncementRoomBody'][];
      /**
       * @description A sound of the media folder, without .wav
       * @default
       */
      sound?: string;
      /**
       * @description Shown, and spoken unless there is a sound; {Name} is a variable's value
       * @default
       */
      text?: string;
      /**
       * @description How long the popup stands
       * @default 10000
       */
      timeout_ms?: number;
      /**
       * @description Goes to the urgent address of loudspeakers that have one
       * @default false
       */
      urgent?: boolean;
      /**
       * @description One of GET /api/voices; empty: the default
       * @default
       */
      voice?: string;
    };
    SayScreen: {
      id: number;
    };
    ScreenSize: {
      /** @description CSS pixels */
      height: number;
      /** @description CSS pixels */
      width: number;
    };
    ScreensRestedEvent: {
      data: {
        room: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'screens_rested';
    };
    ScreensWokenEvent: {
      data: {
        room: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'screens_woken';
    };
    ShownPopup: {
      navigator: number;
      popup: components['schemas']['Popup'];
    };
    SoundEndedEvent: {
      data: {
        error: string | null;
        error_means?: components['schemas']['Meaning'];
        file: string;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'sound_ended';
    };
    SoundFetch: {
      /** @description Of a WAV file */
      address: string;
      sound: number;
    };
    SoundFetchMessage: {
      data: components['schemas']['SoundFetch'];
      /** @constant */
      type: 'sound_fetch';
    };
    SoundGain: {
      /** @description A factor */
      gain: number;
      play: number;
    };
    SoundGainMessage: {
      data: components['schemas']['SoundGain'];
      /** @constant */
      type: 'sound_gain';
    };
    SoundNow: {
      file: string;
      /** @description 0 while it is not known */
      length_ms: number;
      /** Format: date-time */
      since: string;
    };
    SoundPlay: {
      /** @description Of a WAV file */
      address: string;
      /** @description Microseconds of the controller's clock */
      at: number;
      /** @description A factor */
      gain: number;
      play: number;
      sound: number;
    };
    SoundPlayMessage: {
      data: components['schemas']['SoundPlay'];
      /** @constant */
      type: 'sound_play';
    };
    SoundStartedEvent: {
      data: {
        file: string;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'sound_started';
    };
    SoundStop: {
      play: number;
    };
    SoundStopMessage: {
      data: components['schemas']['SoundStop'];
      /** @constant */
      type: 'sound_stop';
    };
    SpeechRecipe: {
      /** @description A sound of the media folder that is heard before; empty: none */
      chime: string;
      /** @description Percent of the voice's own */
      speed: number;
      /** @description {Name} stands for the value of the variable with this name */
      text: string;
      /** @description One of the voices; empty: the house's default */
      voice: string;
    };
    SpeechRecipeBody: {
      /**
       * @description A sound of the media folder that is heard before; empty: none
       * @default
       */
      chime?: string;
      /**
       * @description Percent of the voice's own
       * @default 100
       */
      speed?: number;
      /** @description {Name} stands for the value of the variable with this name */
      text: string;
      /**
       * @description One of the voices; empty: the house's default
       * @default
       */
      voice?: string;
    };
    StateMessage: {
      data: components['schemas']['WholeState'];
      /** @description The number of the last event */
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'state';
    };
    StateNotSavedEvent: {
      data: {
        reason: string;
        reason_means?: components['schemas']['Meaning'];
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'state_not_saved';
    };
    StateSavedEvent: {
      data: Record<string, never>;
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'state_saved';
    };
    Status: {
      agent: boolean;
      /** @description The number of the last event */
      events: number;
      house: string;
      /** @description What these are known from, in words */
      known_from: components['schemas']['KnownFrom'];
      playing: components['schemas']['Playing'] | null;
      popups: components['schemas']['ShownPopup'][];
      /** @description Of these, what can be taken back */
      queue: components['schemas']['Queued'][];
      sound: components['schemas']['PlayingSound'] | null;
      /** Format: date-time */
      started: string;
      state_error: string | null;
      state_error_means?: components['schemas']['Meaning'];
      state_saved: boolean;
      version: string;
      /** @description Ids, the next one first */
      waiting: number[];
    };
    Stopped: {
      /** @description False when nothing played */
      stopped: boolean;
    };
    Ticket: {
      expires_in_ms: number;
      rights: string[];
      ticket: string;
    };
    User: {
      id: number;
      name: string;
    };
    Variable: {
      device: number;
      name: string;
      value: string;
      variable: number;
    };
    VariableBinding: {
      device: number;
      name: string;
      variable: number;
    };
    VariableBindingBody: {
      device: number;
      /** @default  */
      name?: string;
      variable: number;
    };
    VariableChangedEvent: {
      data: {
        device: number;
        value: string;
        variable: number;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'variable_changed';
    };
    VariableList: {
      variables: components['schemas']['Variable'][];
    };
    VariableValue: {
      value: string;
    };
    Voice: {
      /** @enum {string} */
      engine: 'espeak' | 'command' | 'wyoming';
      /** @description Whether it can speak faster and slower */
      has_speeds: boolean;
      is_default: boolean;
      language: string;
      name: string;
      /** @description Why it did not speak when it was last asked */
      trouble: string | null;
      trouble_means?: components['schemas']['Meaning'];
    };
    VoiceFailedEvent: {
      data: {
        reason: string;
        reason_means?: components['schemas']['Meaning'];
        voice: string;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'voice_failed';
    };
    VoiceList: {
      /** @description As in the house file */
      voices: components['schemas']['Voice'][];
    };
    VoiceRecoveredEvent: {
      data: {
        voice: string;
      };
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'voice_recovered';
    };
    Volume: {
      volume: number;
    };
    WakePageEvent: {
      data: Record<string, never>;
      seq: number;
      /** Format: date-time */
      time: string;
      /** @constant */
      type: 'wake';
    };
    WatcherMessage:
      components['schemas']['StateMessage'] | components['schemas']['Alive'] | components['schemas']['Event'];
    WholeState: {
      announcements: components['schemas']['Announcement'][];
      navigators: components['schemas']['Navigator'][];
      rooms: components['schemas']['Room'][];
      status: components['schemas']['Status'];
      variables: components['schemas']['Variable'][];
    };
  };
  responses: never;
  parameters: never;
  requestBodies: never;
  headers: never;
  pathItems: never;
}
export type Alive = components['schemas']['Alive'];
export type Announcement = components['schemas']['Announcement'];
export type AnnouncementAudio = components['schemas']['AnnouncementAudio'];
export type AnnouncementAudioBody = components['schemas']['AnnouncementAudioBody'];
export type AnnouncementBody = components['schemas']['AnnouncementBody'];
export type AnnouncementEndedEvent = components['schemas']['AnnouncementEndedEvent'];
export type AnnouncementList = components['schemas']['AnnouncementList'];
export type AnnouncementNavigator = components['schemas']['AnnouncementNavigator'];
export type AnnouncementNavigatorBody = components['schemas']['AnnouncementNavigatorBody'];
export type AnnouncementNavigatorPlace = components['schemas']['AnnouncementNavigatorPlace'];
export type AnnouncementRemovedEvent = components['schemas']['AnnouncementRemovedEvent'];
export type AnnouncementRoom = components['schemas']['AnnouncementRoom'];
export type AnnouncementRoomBody = components['schemas']['AnnouncementRoomBody'];
export type AnnouncementRoomVolume = components['schemas']['AnnouncementRoomVolume'];
export type AnnouncementStartedEvent = components['schemas']['AnnouncementStartedEvent'];
export type AnnouncementStoppedEvent = components['schemas']['AnnouncementStoppedEvent'];
export type AnnouncementStoredEvent = components['schemas']['AnnouncementStoredEvent'];
export type AnnouncementVideo = components['schemas']['AnnouncementVideo'];
export type AnnouncementVideoBody = components['schemas']['AnnouncementVideoBody'];
export type Code = components['schemas']['Code'];
export type Confirmed = components['schemas']['Confirmed'];
export type Dismissed = components['schemas']['Dismissed'];
export type Event = components['schemas']['Event'];
export type EventList = components['schemas']['EventList'];
export type FollowedVariable = components['schemas']['FollowedVariable'];
export type Health = components['schemas']['Health'];
export type History = components['schemas']['History'];
export type HistoryEntry = components['schemas']['HistoryEntry'];
export type House = components['schemas']['House'];
export type KnownFrom = components['schemas']['KnownFrom'];
export type LogEvent = components['schemas']['LogEvent'];
export type Loudness = components['schemas']['Loudness'];
export type LoudnessOrder = components['schemas']['LoudnessOrder'];
export type Meaning = components['schemas']['Meaning'];
export type MediaFile = components['schemas']['MediaFile'];
export type MediaList = components['schemas']['MediaList'];
export type MediaRemovedEvent = components['schemas']['MediaRemovedEvent'];
export type MediaStoredEvent = components['schemas']['MediaStoredEvent'];
export type Moment = components['schemas']['Moment'];
export type Named = components['schemas']['Named'];
export type Navigator = components['schemas']['Navigator'];
export type NavigatorList = components['schemas']['NavigatorList'];
export type Nothing = components['schemas']['Nothing'];
export type Operation = components['schemas']['Operation'];
export type OperationList = components['schemas']['OperationList'];
export type OperationParameter = components['schemas']['OperationParameter'];
export type Output = components['schemas']['Output'];
export type OutputList = components['schemas']['OutputList'];
export type OutputTest = components['schemas']['OutputTest'];
export type OutputTested = components['schemas']['OutputTested'];
export type PageMessage = components['schemas']['PageMessage'];
export type PagesChangedEvent = components['schemas']['PagesChangedEvent'];
export type PageState = components['schemas']['PageState'];
export type PageStateMessage = components['schemas']['PageStateMessage'];
export type Parameters = components['schemas']['Parameters'];
export type PlayAskedEvent = components['schemas']['PlayAskedEvent'];
export type Played = components['schemas']['Played'];
export type Playing = components['schemas']['Playing'];
export type PlayingChangedEvent = components['schemas']['PlayingChangedEvent'];
export type PlayingSound = components['schemas']['PlayingSound'];
export type Pong = components['schemas']['Pong'];
export type Popup = components['schemas']['Popup'];
export type PopupChangedEvent = components['schemas']['PopupChangedEvent'];
export type PopupChangedPageEvent = components['schemas']['PopupChangedPageEvent'];
export type PopupHiddenEvent = components['schemas']['PopupHiddenEvent'];
export type PopupHiddenPageEvent = components['schemas']['PopupHiddenPageEvent'];
export type PopupShownEvent = components['schemas']['PopupShownEvent'];
export type PopupShownPageEvent = components['schemas']['PopupShownPageEvent'];
export type Problem = components['schemas']['Problem'];
export type Queue = components['schemas']['Queue'];
export type QueueChangedEvent = components['schemas']['QueueChangedEvent'];
export type Queued = components['schemas']['Queued'];
export type QueueMove = components['schemas']['QueueMove'];
export type Rehearsal = components['schemas']['Rehearsal'];
export type RehearsalOrder = components['schemas']['RehearsalOrder'];
export type RestPageEvent = components['schemas']['RestPageEvent'];
export type Room = components['schemas']['Room'];
export type RoomHealthChangedEvent = components['schemas']['RoomHealthChangedEvent'];
export type RoomList = components['schemas']['RoomList'];
export type RoomOutputFailedEvent = components['schemas']['RoomOutputFailedEvent'];
export type RoomRestoredEvent = components['schemas']['RoomRestoredEvent'];
export type RoomSetUpEvent = components['schemas']['RoomSetUpEvent'];
export type RoomVolume = components['schemas']['RoomVolume'];
export type RoomVolumeChangedEvent = components['schemas']['RoomVolumeChangedEvent'];
export type Said = components['schemas']['Said'];
export type SayOrder = components['schemas']['SayOrder'];
export type SayScreen = components['schemas']['SayScreen'];
export type ScreenSize = components['schemas']['ScreenSize'];
export type ScreensRestedEvent = components['schemas']['ScreensRestedEvent'];
export type ScreensWokenEvent = components['schemas']['ScreensWokenEvent'];
export type ShownPopup = components['schemas']['ShownPopup'];
export type SoundEndedEvent = components['schemas']['SoundEndedEvent'];
export type SoundFetch = components['schemas']['SoundFetch'];
export type SoundFetchMessage = components['schemas']['SoundFetchMessage'];
export type SoundGain = components['schemas']['SoundGain'];
export type SoundGainMessage = components['schemas']['SoundGainMessage'];
export type SoundNow = components['schemas']['SoundNow'];
export type SoundPlay = components['schemas']['SoundPlay'];
export type SoundPlayMessage = components['schemas']['SoundPlayMessage'];
export type SoundStartedEvent = components['schemas']['SoundStartedEvent'];
export type SoundStop = components['schemas']['SoundStop'];
export type SoundStopMessage = components['schemas']['SoundStopMessage'];
export type SpeechRecipe = components['schemas']['SpeechRecipe'];
export type SpeechRecipeBody = components['schemas']['SpeechRecipeBody'];
export type StateMessage = components['schemas']['StateMessage'];
export type StateNotSavedEvent = components['schemas']['StateNotSavedEvent'];
export type StateSavedEvent = components['schemas']['StateSavedEvent'];
export type Status = components['schemas']['Status'];
export type Stopped = components['schemas']['Stopped'];
export type Ticket = components['schemas']['Ticket'];
export type User = components['schemas']['User'];
export type Variable = components['schemas']['Variable'];
export type VariableBinding = components['schemas']['VariableBinding'];
export type VariableBindingBody = components['schemas']['VariableBindingBody'];
export type VariableChangedEvent = components['schemas']['VariableChangedEvent'];
export type VariableList = components['schemas']['VariableList'];
export type VariableValue = components['schemas']['VariableValue'];
export type Voice = components['schemas']['Voice'];
export type VoiceFailedEvent = components['schemas']['VoiceFailedEvent'];
export type VoiceList = components['schemas']['VoiceList'];
export type VoiceRecoveredEvent = components['schemas']['VoiceRecoveredEvent'];
export type Volume = components['schemas']['Volume'];
export type WakePageEvent = components['schemas']['WakePageEvent'];
export type WatcherMessage = components['schemas']['WatcherMessage'];
export type WholeState = components['schemas']['WholeState'];
export type $defs = Record<string, never>;
export interface operations {
  list_announcements: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Every stored announcement, by id */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['AnnouncementList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  add_announcement: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['AnnouncementBody'];
      };
    };
    responses: {
      /** @description Stores an announcement; the agent chooses its id */
      201: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Announcement'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_announcement: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description One announcement */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Announcement'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  replace_announcement: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['AnnouncementBody'];
      };
    };
    responses: {
      /** @description Replaces all of an announcement; with If-Match only when it is still the one that was read */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Announcement'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  remove_announcement: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Removes an announcement; one that plays plays to its end */
      204: {
        headers: {
          [name: string]: unknown;
        };
        content?: never;
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  put_announcement_navigator: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
        /** @description the navigator that is meant */
        navigator: number;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['AnnouncementNavigatorPlace'];
      };
    };
    responses: {
      /** @description Adds a navigator to an announcement, or changes it there */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['AnnouncementNavigator'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  remove_announcement_navigator: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
        /** @description the navigator that is meant */
        navigator: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Takes a navigator out of an announcement */
      204: {
        headers: {
          [name: string]: unknown;
        };
        content?: never;
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  play_announcement: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Plays an announcement, now or when its turn comes */
      202: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Played'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  put_announcement_room: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
        /** @description the room that is meant */
        room: number;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['AnnouncementRoomVolume'];
      };
    };
    responses: {
      /** @description Adds a room to an announcement, or changes its volume there */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['AnnouncementRoom'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  remove_announcement_room: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
        /** @description the room that is meant */
        room: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Takes a room out of an announcement */
      204: {
        headers: {
          [name: string]: unknown;
        };
        content?: never;
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  send_command: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['Parameters'];
      };
    };
    responses: {
      /** @description Sends the agent one of its own commands */
      202: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Nothing'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  dismiss: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Takes the popup of what plays away, on every screen */
      202: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Dismissed'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  watch_events: {
    parameters: {
      query?: {
        /** @description in place of a token */
        ticket?: string;
      };
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The full state, then every change, as WebSocket */
      101: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['WatcherMessage'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_recent_events: {
    parameters: {
      query?: {
        /** @description at most so many, 1 to 1000; 100 */
        limit?: string;
      };
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The last events, oldest first */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['EventList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_history: {
    parameters: {
      query?: {
        /** @description only what came before the entry with this id */
        before?: string;
        /** @description at most so many, 1 to 1000; 100 */
        limit?: string;
      };
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description What has been played, newest first */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['History'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_house: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Name, rooms and navigators of the house */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['House'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_media: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The sounds and images of the media folder */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['MediaList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_media: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description A sound or image itself */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/octet-stream': string;
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  put_media: {
    parameters: {
      query?: {
        /** @description Where the wanted part of a sound begins */
        from_ms?: string;
        /** @description Whether it goes when it has been heard: true or false */
        passing?: string;
        /** @description Where it ends, at most 20000 later */
        to_ms?: string;
      };
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/octet-stream': string;
      };
    };
    responses: {
      /** @description Stores a sound or image in any usual format; 201 when it is new */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['MediaFile'];
        };
      };
      /** @description Stores a sound or image in any usual format; 201 when it is new */
      201: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['MediaFile'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  remove_media: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Removes a sound or image that no announcement uses */
      204: {
        headers: {
          [name: string]: unknown;
        };
        content?: never;
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  put_loudness: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['LoudnessOrder'];
      };
    };
    responses: {
      /** @description Says whether a sound is played as loud as all others, or as it is */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['MediaFile'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  put_speech: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['SpeechRecipeBody'];
      };
    };
    responses: {
      /** @description Stores a spoken sound, and speaks it */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['MediaFile'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_thumbnail: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description An image with at most 320 pixels on the longer side */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/octet-stream': string;
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_navigators: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The navigators */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['NavigatorList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_navigator: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description One navigator */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Navigator'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  watch_navigator: {
    parameters: {
      query?: {
        /** @description in place of a token */
        ticket?: string;
      };
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description What a navigator's page shows, as WebSocket */
      101: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['PageMessage'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  confirm_popup: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
        /** @description the number that is meant */
        number: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The OK of a popup: closes it on every screen; of one that is gone it does nothing */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Confirmed'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  test_navigator: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Shows a popup on the navigator for a few seconds */
      202: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Played'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_one_time_sound: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description A sound that a player in the house was told to fetch, for a minute */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/octet-stream': string;
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  describe_api: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description This API as OpenAPI 3.1 */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': Record<string, never>;
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_operations: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description This list */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['OperationList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_outputs: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Where rooms could be heard, each with its line for the house file */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['OutputList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  test_output: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['OutputTest'];
      };
    };
    responses: {
      /** @description Plays a tone on an output, whether it is a room's or not */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['OutputTested'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_queue: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description What waits to be played, the next one first */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Queue'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  remove_queued: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the entry that is meant */
        entry: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Takes back what waits */
      204: {
        headers: {
          [name: string]: unknown;
        };
        content?: never;
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  move_queued: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the entry that is meant */
        entry: number;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['QueueMove'];
      };
    };
    responses: {
      /** @description Moves what waits in front of another one, or behind all */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Queue'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  rehearse: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['RehearsalOrder'];
      };
    };
    responses: {
      /** @description What playing an announcement would do, without playing it */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Rehearsal'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  send_request: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the name that is meant */
        name: string;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['Parameters'];
      };
    };
    responses: {
      /** @description Sends the agent one of its own requests; gives its XML */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/xml': string;
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_rooms: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The rooms */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['RoomList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_room: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description One room */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Room'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  test_room: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Plays a tone in the room, at its own volume */
      202: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Played'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  set_room_volume: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: number;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['Volume'];
      };
    };
    responses: {
      /** @description Sets a room's volume, at most its highest */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['RoomVolume'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  say: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['SayOrder'];
      };
    };
    responses: {
      /** @description Speaks and shows a text, or plays a sound, once */
      202: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Said'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_status: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description What is playing and waiting, and how that is known */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Status'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  stop: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Stops what plays: the sound fades out in every room, and the popups go */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Stopped'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  give_ticket: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description A ticket for opening one WebSocket from a browser */
      201: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Ticket'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  try_announcement: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['AnnouncementBody'];
      };
    };
    responses: {
      /** @description Plays an announcement once, without storing it */
      202: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Played'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_variables: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The variables */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['VariableList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_variable: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the device that is meant */
        device: number;
        /** @description the variable that is meant */
        variable: number;
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description One variable */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Variable'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  set_variable: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the device that is meant */
        device: number;
        /** @description the variable that is meant */
        variable: number;
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['VariableValue'];
      };
    };
    responses: {
      /** @description Sets a variable; popups that are bound to it follow */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Variable'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  list_voices: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description The voices of the house */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['VoiceList'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_health: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Whether the controller works */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Health'];
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
  get_metrics: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Counts for Prometheus */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'text/plain': string;
        };
      };
      /** @description What is wrong, and what would be right */
      default: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/problem+json': components['schemas']['Problem'];
        };
      };
    };
  };
}
