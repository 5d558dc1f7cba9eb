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
     * Plays an announcement, or queues it behind what plays
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
     * Stores a sound or image; 201 when it is new
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
  '/api/openapi.json': {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    /** This API as OpenAPI 3.0 */
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
    Announcement: {
      audio?: {
        delay_ms?: components['schemas']['Milliseconds'];
        /** @description A sound of the media folder, without .wav */
        file?: string;
      };
      id?: components['schemas']['Id'];
      name: string;
      navigators?: components['schemas']['AnnouncementNavigator'][];
      rooms?: components['schemas']['AnnouncementRoom'][];
      video?: {
        delay_ms?: components['schemas']['Milliseconds'];
        /** @description A file of the media folder, or an http(s) address */
        image?: string;
        /** @default true */
        ok_button?: boolean;
        text?: string;
        /** @description 0 means 30000 */
        timeout_ms?: number;
        variable?: components['schemas']['VariableBinding'] | null;
      };
    };
    AnnouncementList: {
      announcements: components['schemas']['Announcement'][];
    };
    AnnouncementNavigator: {
      id: components['schemas']['Id'];
      /** @default true */
      onscreen?: boolean;
      room?: number;
    };
    AnnouncementNavigatorPlace: {
      /** @default true */
      onscreen?: boolean;
      room?: number;
    };
    AnnouncementRoom: {
      id: components['schemas']['Id'];
      /**
       * @description 0 and -1 leave the room's volume as it is
       * @default -1
       */
      volume?: number;
    };
    AnnouncementRoomVolume: {
      /** @default -1 */
      volume?: number;
    };
    Anything: Record<string, never>;
    Confirmed: {
      dismissed: boolean;
    };
    Dismissed: {
      announcement: number | null;
    };
    EventList: {
      events: {
        data: Record<string, never>;
        seq: number;
        /** Format: date-time */
        time: string;
        type: string;
      }[];
    };
    Health: {
      status: string;
    };
    History: {
      history: {
        announcement?: components['schemas']['Id'];
        /** Format: date-time */
        ended?: string;
        file?: string;
        id?: number;
        name?: string;
        navigators?: components['schemas']['Id'][];
        outcome?: string;
        rooms?: components['schemas']['Id'][];
        /** Format: date-time */
        started?: string;
      }[];
    };
    House: {
      name: string;
      navigators: components['schemas']['Navigator'][];
      rooms: components['schemas']['Room'][];
    };
    Id: number;
    MediaFile: {
      bytes: number;
      channels?: number;
      duration_ms?: number;
      /** @enum {string} */
      kind: 'sound' | 'image';
      /** Format: date-time */
      modified: string;
      name: string;
      sample_rate?: number;
      /** @description Why the sound cannot be played */
      trouble?: string;
    };
    MediaList: {
      media: components['schemas']['MediaFile'][];
    };
    Milliseconds: number;
    Navigator: {
      awake: boolean;
      id: components['schemas']['Id'];
      name: string;
      pages: number;
      popup: components['schemas']['Popup'] | null;
      room: components['schemas']['Id'];
    };
    NavigatorList: {
      navigators: components['schemas']['Navigator'][];
    };
    Nothing: Record<string, never>;
    OperationList: {
      operations: {
        method?: string;
        name?: string;
        parameters?: {
          in?: string;
          name?: string;
          summary?: string;
        }[];
        path?: string;
        right?: string;
        summary?: string;
      }[];
    };
    Parameters: {
      [key: string]: string;
    };
    Played: {
      announcement: components['schemas']['Id'];
      /** @enum {string} */
      state: 'playing' | 'waiting';
    };
    Popup: {
      /** Format: date-time */
      ends: string;
      image: string;
      message: string;
      number: number;
      ok_button: boolean;
      remaining_ms: number;
    };
    Problem: {
      /** @description What is wrong, and where */
      detail: string;
      /** @description What would be right */
      right?: string;
      status: number;
      title: string;
      type: string;
    };
    Rehearsal: {
      announcement: components['schemas']['Id'];
      complete: boolean;
      length_ms: number;
      timeline: {
        at_ms: number;
        what: string;
      }[];
    };
    RehearsalOrder: {
      announcement: components['schemas']['Id'] | components['schemas']['Announcement'];
      sound_ms?: number;
      /** @default 20 */
      stream_ready_ms?: number;
    };
    Room: {
      awake: boolean;
      id: components['schemas']['Id'];
      in_announcement: boolean;
      lead_silence_ms: number;
      max_volume: number;
      name: string;
      output: string;
      trouble: string | null;
      volume: number;
    };
    RoomList: {
      rooms: components['schemas']['Room'][];
    };
    RoomVolume: {
      id: components['schemas']['Id'];
      volume: number;
    };
    Status: {
      agent?: boolean;
      events?: number;
      house?: string;
      known_from?: {
        [key: string]: string;
      };
      playing?: {
        announcement?: components['schemas']['Id'];
        name?: string;
        /** Format: date-time */
        since?: string;
      } | null;
      popups?: {
        navigator?: components['schemas']['Id'];
        popup?: components['schemas']['Popup'];
      }[];
      sound?: {
        file?: string;
        /** Format: date-time */
        since?: string;
      } | null;
      /** Format: date-time */
      started?: string;
      state_error?: string | null;
      state_saved?: boolean;
      version?: string;
      waiting?: components['schemas']['Id'][];
    };
    Ticket: {
      expires_in_ms: number;
      rights: string[];
      ticket: string;
    };
    Variable: {
      device: components['schemas']['Id'];
      name: string;
      value: string;
      variable: components['schemas']['Id'];
    };
    VariableBinding: {
      device: components['schemas']['Id'];
      name?: string;
      variable: components['schemas']['Id'];
    };
    VariableList: {
      variables: components['schemas']['Variable'][];
    };
    VariableValue: {
      value: string;
    };
    Volume: {
      volume: number;
    };
  };
  responses: never;
  parameters: never;
  requestBodies: never;
  headers: never;
  pathItems: never;
}
export type Announcement = components['schemas']['Announcement'];
export type AnnouncementList = components['schemas']['AnnouncementList'];
export type AnnouncementNavigator = components['schemas']['AnnouncementNavigator'];
export type AnnouncementNavigatorPlace = components['schemas']['AnnouncementNavigatorPlace'];
export type AnnouncementRoom = components['schemas']['AnnouncementRoom'];
export type AnnouncementRoomVolume = components['schemas']['AnnouncementRoomVolume'];
export type Anything = components['schemas']['Anything'];
export type Confirmed = components['schemas']['Confirmed'];
export type Dismissed = components['schemas']['Dismissed'];
export type EventList = components['schemas']['EventList'];
export type Health = components['schemas']['Health'];
export type History = components['schemas']['History'];
export type House = components['schemas']['House'];
export type Id = components['schemas']['Id'];
export type MediaFile = components['schemas']['MediaFile'];
export type MediaList = components['schemas']['MediaList'];
export type Milliseconds = components['schemas']['Milliseconds'];
export type Navigator = components['schemas']['Navigator'];
export type NavigatorList = components['schemas']['NavigatorList'];
export type Nothing = components['schemas']['Nothing'];
export type OperationList = components['schemas']['OperationList'];
export type Parameters = components['schemas']['Parameters'];
export type Played = components['schemas']['Played'];
export type Popup = components['schemas']['Popup'];
export type Problem = components['schemas']['Problem'];
export type Rehearsal = components['schemas']['Rehearsal'];
export type RehearsalOrder = components['schemas']['RehearsalOrder'];
export type Room = components['schemas']['Room'];
export type RoomList = components['schemas']['RoomList'];
export type RoomVolume = components['schemas']['RoomVolume'];
export type Status = components['schemas']['Status'];
export type Ticket = components['schemas']['Ticket'];
export type Variable = components['schemas']['Variable'];
export type VariableBinding = components['schemas']['VariableBinding'];
export type VariableList = components['schemas']['VariableList'];
export type VariableValue = components['schemas']['VariableValue'];
export type Volume = components['schemas']['Volume'];
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
        'application/json': components['schemas']['Announcement'];
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
        id: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
      };
      cookie?: never;
    };
    requestBody: {
      content: {
        'application/json': components['schemas']['Announcement'];
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
        id: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
        /** @description the navigator that is meant */
        navigator: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
        /** @description the navigator that is meant */
        navigator: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
      };
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description Plays an announcement, or queues it behind what plays */
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
        id: components['schemas']['Id'];
        /** @description the room that is meant */
        room: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
        /** @description the room that is meant */
        room: components['schemas']['Id'];
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
        'application/octet-stream': string;
      };
    };
    responses: {
      /** @description Stores a sound or image; 201 when it is new */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['MediaFile'];
        };
      };
      /** @description Stores a sound or image; 201 when it is new */
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
        id: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
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
  confirm_popup: {
    parameters: {
      query?: never;
      header?: never;
      path: {
        /** @description the id that is meant */
        id: components['schemas']['Id'];
        /** @description the number that is meant */
        number: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
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
  describe_api: {
    parameters: {
      query?: never;
      header?: never;
      path?: never;
      cookie?: never;
    };
    requestBody?: never;
    responses: {
      /** @description This API as OpenAPI 3.0 */
      200: {
        headers: {
          [name: string]: unknown;
        };
        content: {
          'application/json': components['schemas']['Anything'];
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
        id: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
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
        id: components['schemas']['Id'];
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
        device: components['schemas']['Id'];
        /** @description the variable that is meant */
        variable: components['schemas']['Id'];
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
        device: components['schemas']['Id'];
        /** @description the variable that is meant */
        variable: components['schemas']['Id'];
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
